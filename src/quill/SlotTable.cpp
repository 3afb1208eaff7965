#include <quill/SlotTable.h>

#include <koi/Hash.h>
#include <mem/Rova.h>

#include "Magic.h"

namespace Quill {
namespace {

void nameIs( char ( &to )[64], std::string const & name, char const * what ) {
  int const length = std::snprintf( to, sizeof to, "%s", name.c_str() );
  if( length < 0 || static_cast< std::size_t >( length ) >= sizeof to )
    throw Rova::InvalidInitializeException( what + name + " exceeds 64 characters" );
}

U32 hashOf( U32 const & number ) { return Koi::hashOfBytes( &number, sizeof number ); }

}  // namespace

SlotTable::Header::Header( U32 kindle_, Layout const & layout, U32 numSlots_ )
    : version( currentVersion ),
      kindle( kindle_ ),
      valueSize( layout.valueSize ),
      slotSize( layout.slotSize() ),
      maxSlots( layout.maxSlots ),
      seed( layout.seed ),
      numSlots{ 0, numSlots_ } {
  magicIs( magic, "QUILLSLT" );
  nameIs( valueType, layout.valueType, "SlotTable::Header() value typename " );
  nameIs( classType, layout.classType, "SlotTable::Header() class typename: " );
  hash = layoutHash();
}

U32 SlotTable::Header::layoutHash() const {
  return Koi::hashOfBytes( valueType, sizeof valueType ) +
         Koi::hashOfBytes( classType, sizeof classType ) + hashOf( valueSize ) +
         hashOf( slotSize ) + hashOf( maxSlots ) + hashOf( seed );
}

bool SlotTable::Header::validate( Ntrace::Handler const & handler, U64 fileSize, U32 kindle_,
                                  std::string & message ) const {
  auto const not_ = [&]( auto const &... part ) {
    return disbelieved( message, handler, part... );
  };
  if( fileSize < firstSlotAt( 48 ) )
    return not_( "SlotTable::Header::validate() bad header file size: ", fileSize );
  if( !isMagic( magic, "QUILLSLT" ) )
    return not_( "SlotTable::Header::validate() bad magic: ", inHex( magic ) );
  if( version != currentVersion )
    return not_( "SlotTable::Header::validate() bad version: ", version );
  if( kindle_ != 0 && kindle != kindle_ )
    return not_( "SlotTable::validate() bad kindle:", inHex( kindle ) );
  if( hash != layoutHash() )
    return not_( "SlotTable::Header::validate() checksum fail: ", inHex( layoutHash() ),
                 " != ", inHex( hash ) );
  if( occupiedSlots > numSlots.ref )
    return not_( "SlotTable::Header::validate() bad occupiedSlots: ", occupiedSlots );
  if( freeSlots != noIndex && freeSlots >= numSlots.ref )
    return not_( "SlotTable::Header::validate() bad freeSlots: ", freeSlots );
  if( fileSize < SlotTable::fileSize( slotSize, numSlots.ref ) )
    return not_( "SlotTable::Header::validate() bad shmem size:", fileSize );
  return true;
}

bool SlotTable::Header::isOf( Layout const & layout, std::string & message ) const {
  auto const differs = [&]( char const * what, auto const & is, auto const & shouldBe ) {
    std::ostringstream text;
    text << "the file's " << what << " is " << is << ", not " << shouldBe;
    message = text.str();
    return false;
  };
  if( valueTypeName() != layout.valueType )
    return differs( "value type", valueTypeName(), layout.valueType );
  if( classTypeName() != layout.classType )
    return differs( "class type", classTypeName(), layout.classType );
  if( valueSize != layout.valueSize )
    return differs( "value size", valueSize, layout.valueSize );
  if( slotSize != layout.slotSize() )
    return differs( "slot size", slotSize, layout.slotSize() );
  if( layout.maxSlots != 0 && maxSlots != layout.maxSlots )
    return differs( "largest number of slots", maxSlots, layout.maxSlots );
  return true;
}

void SlotTable::Header::trace( Ntrace::Handler const & handler ) const {
  handler.trace( 3, "SlotTable::Header() ", " magic:", inHex( magic ), " version:", version,
                 " kindle:", inHex( kindle ), " valueSize:", valueSize,
                 " valueType:", valueTypeName(), " classType:", classTypeName(),
                 " maxSlots:", maxSlots, " hash:", inHex( hash ), " slotSize: ", slotSize,
                 " occupiedSlots:", occupiedSlots, " freeSlots: ", freeSlots,
                 " numSlots:", numSlots.ref );
}

}  // namespace Quill
