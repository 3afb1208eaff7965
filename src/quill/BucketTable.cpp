#include <quill/BucketTable.h>

#include "Magic.h"

namespace Quill {

BucketTable::Header::Header( U32 kindle_, U32 numBuckets_ )
    : version( currentVersion ), kindle( kindle_ ), numBuckets{ 0, numBuckets_ } {
  magicIs( magic, "QUILLBKT" );
}

bool BucketTable::Header::validate( Ntrace::Handler const & handler, U64 fileSize, U32 kindle_,
                                    std::string & message ) const {
  auto const not_ = [&]( auto const &... part ) {
    return disbelieved( message, handler, part... );
  };
  if( fileSize < firstBucketAt )
    return not_( "BucketTable::validate() bad header file size: ", fileSize );
  if( !isMagic( magic, "QUILLBKT" ) )
    return not_( "BucketTable::validate() bad magic: ", inHex( magic ) );
  if( version != currentVersion )
    return not_( "BucketTable::validate() bad version: ", version );
  if( kindle_ != 0 && kindle != kindle_ )
    return not_( "BucketTable::validate() bad kindle:", inHex( kindle ) );
  if( numBuckets.ref > endBit )
    return not_( "BucketTable::validate() bad numBuckets:", numBuckets.ref );
  if( fileSize < BucketTable::fileSize( numBuckets.ref ) )
    return not_( "BucketTable::validate() bad shmem size:", fileSize );
  return true;
}

void BucketTable::Header::trace( Ntrace::Handler const & handler ) const {
  handler.trace( 3, "BucketTable::Header() ", " magic:", inHex( magic ), " version:", version,
                 " kindle:", inHex( kindle ), " numBuckets:", numBuckets.ref );
}

}  // namespace Quill
