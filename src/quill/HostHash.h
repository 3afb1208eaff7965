// HostHash.h: the hash that chooses the bucket of a host: that of its address, begun with the
// table's seed, exclusive-or its filtering database. Pure functions; any thread.
#pragma once

#include <Lumo/Bridging.h>
#include <quill/Record.h>

namespace Quill {

template<>
struct BucketHash< ::Bridging::HostKey > {
  static U32 of( ::Bridging::HostKey const & key, U32 seed ) {
    auto const bytes = key.addr().bytes();
    Koi::HashStream stream( seed );
    stream.block( bytes[0] | bytes[1] << 8 | bytes[2] << 16 | U32{ bytes[3] } << 24 );
    stream.narrow( static_cast< U32 >( bytes[4] | bytes[5] << 8 ), 2 );
    return stream.finish() ^ key.fid().value();
  }
};

}  // namespace Quill
