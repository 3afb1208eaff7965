// HostHash.h: the hash that chooses the bucket of a host: that of its address, begun with the
// table's seed, exclusive-or its filtering database. Pure functions; any thread.
#pragma once

#include <quill/Record.h>

namespace Bridging {
class HostKey;
}

// It is declared before its key is: the header that has the key has tables of it, too.
template<>
struct Quill::BucketHash< ::Bridging::HostKey > {
  static Koi::U32 of( ::Bridging::HostKey const & key, Koi::U32 seed );
};

#include <Lumo/Bridging.h>

inline Koi::U32 Quill::BucketHash< ::Bridging::HostKey >::of( ::Bridging::HostKey const & key,
                                                              Koi::U32 seed ) {
  auto const bytes = key.addr().bytes();
  Koi::HashStream stream( seed );
  stream.block( bytes[0] | bytes[1] << 8 | bytes[2] << 16 | Koi::U32{ bytes[3] } << 24 );
  stream.narrow( static_cast< Koi::U32 >( bytes[4] | bytes[5] << 8 ), 2 );
  return stream.finish() ^ key.fid().value();
}
