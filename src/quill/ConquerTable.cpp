#include <quill/ConquerTable.h>

#include "Magic.h"

namespace Quill {

ConquerTable::Header::Header( U32 kindle_, U32 capacity )
    : version( currentVersion ), kindle( kindle_ ), notifications{ 0, capacity } {
  magicIs( magic, "QUILLCQR" );
}

bool ConquerTable::Header::validate( Ntrace::Handler const & handler, U64 fileSize, U32 kindle_,
                                     std::string & message ) const {
  auto const not_ = [&]( auto const &... part ) {
    return disbelieved( message, handler, part... );
  };
  if( fileSize < firstNotificationAt )
    return not_( "ConquerTable::validate() bad header file size: ", fileSize );
  if( !isMagic( magic, "QUILLCQR" ) )
    return not_( "ConquerTable::validate() bad magic: ", inHex( magic ) );
  if( version != currentVersion )
    return not_( "ConquerTable::validate() bad version: ", version );
  if( kindle_ != 0 && kindle != kindle_ )
    return not_( "ConquerTable::validate() bad kindle:", inHex( kindle ) );
  if( fileSize < ConquerTable::fileSize( notifications.ref ) )
    return not_( "ConquerTable::validate() bad shmem size:", fileSize );
  if( currentTable > conquer2 )
    return not_( "ConquerTable::validate() bad tableId:", currentTable );
  return true;
}

void ConquerTable::Header::trace( Ntrace::Handler const & handler ) const {
  handler.trace( 3, "ConquerTable::Header() magic:", inHex( magic ), " version:", version,
                 " kindle:", inHex( kindle ), " numReaders:", numReaders,
                 " currentTable:", currentTable, " notifications:", notifications.ref,
                 " currentPos:", currentPos, " corralStart:", corralStart,
                 " corralEnd:", corralEnd );
}

}  // namespace Quill
