// RecordEmitter.cpp: how a table's value becomes the words of its slot, and back.
#include <algorithm>

#include "Emitter.h"
#include "SlotLayout.h"

namespace Koigen {
namespace {

using Texts = std::vector< std::string >;
using Pieces = std::vector< SlotLayout::Piece >;

/// As the namespace Quill sees it, which has namespaces inside that are called as others outside.
std::string fromAnywhere( Context const & context, TypeUse const & type ) {
  return type.declaration ? "::" + type.declaration->fullName() : context.bare( type );
}

/// "  16  moves         4": a line for each piece.
std::string layoutText( Pieces const & pieces ) {
  std::size_t widest = 0;
  for( auto const & p : pieces )
    widest = std::max( widest, p.dotted().size() );
  std::string text;
  for( auto const & p : pieces ) {
    std::string const offset = std::to_string( p.offset ), size = std::to_string( p.size );
    text += std::string( 4 - offset.size(), ' ' ) + offset + "  " + p.dotted() +
            std::string( widest - p.dotted().size() + 5 - size.size(), ' ' ) + size + "\n";
  }
  return text;
}

std::string placeText( SlotLayout::Piece const & p ) {
  return std::to_string( p.offset ) + ", " + std::to_string( p.size ) + " >( words";
}

std::string putText( SlotLayout::Piece const & p, std::string const & value ) {
  return "Koi::recordPut< " + placeText( p ) + ", " + value + " );\n";
}

bool hasFields( TypeUse const & type ) {
  return type.declaration && type.declaration->kind == Declaration::structure &&
         !type.declaration->foreign;
}

std::string built( std::string const & type, Texts const & fields ) {
  std::string text =
      page( "recordBuilt", { { "Type", type }, { "fields", stacked( fields, ",\n" ) } } );
  text.pop_back();  // it goes on in the same line
  return text;
}

/// What builds each field of the structure out of the pieces from `next` on, which moves behind
/// them.
Texts readTexts( Context const & context, Declaration const & d, Pieces::const_iterator & next ) {
  Texts fields;
  for( auto const & m : d.members ) {
    if( m.kind != Member::field )
      continue;
    std::string const name = fromAnywhere( context, m.type );
    if( hasFields( m.type ) )
      fields.push_back( built( name, readTexts( context, *m.type.declaration, next ) ) );
    else
      fields.push_back( "Koi::recordGet< " + name + ", " + placeText( *next++ ) + " )" );
  }
  return fields;
}

/// A line that clears the words, when not all bytes up to `end` belong to a piece.
std::string clearText( Pieces::const_iterator first, Pieces::const_iterator last,
                       std::uint32_t begin, std::uint32_t end, std::string const & size ) {
  for( ; first != last; begin = first->offset + first->size, ++first )
    if( first->offset != begin )
      break;
  return first == last && begin == end ? "" : "std::memset( words, 0, " + size + " );";
}

}  // namespace

std::string recordText( Context const & context, Declaration const & d ) {
  SlotLayout const layout = slotLayoutOf( d );
  auto const & pieces = layout.pieces;
  auto const behindKey =
      pieces.begin() + static_cast< Pieces::difference_type >( layout.numKeyPieces );

  std::string putKey, put;
  for( auto it = pieces.begin(); it != behindKey; ++it ) {
    std::string const path = it->dotted( "()." );
    auto const cut = path.find( '.' );
    putKey += putText( *it, cut == path.npos ? "key" : "key" + path.substr( cut ) + "()" );
  }
  for( auto it = behindKey; it != pieces.end(); ++it )
    put += putText( *it, "value." + it->dotted( "()." ) + "()" );

  auto const & key = *std::find_if( d.members.begin(), d.members.end(),
                                    []( auto const & m ) { return m.kind == Member::field; } );
  auto next = pieces.begin();
  Texts read = readTexts( context, d, next );
  next = pieces.begin();
  std::string const readKey =
      hasFields( key.type ) ? built( "Key", readTexts( context, *key.type.declaration, next ) )
                            : read.front();
  read.front() = "key( words )";
  return page(
      "record",
      { { "Type", d.name },
        { "name", d.fullName() },
        { "Key", fromAnywhere( context, key.type ) },
        { "key", key.name },
        { "keySize", std::to_string( layout.keySize ) },
        { "valueSize", std::to_string( layout.valueSize ) },
        { "layout", layoutText( pieces ) },
        { "clearKey", clearText( pieces.begin(), behindKey, 0, layout.keySize, "keySize" ) },
        { "clear",
          clearText( behindKey, pieces.end(), layout.keySize, layout.valueSize, "valueSize" ) },
        { "putKey", putKey },
        { "put", put },
        { "readKey", readKey },
        { "readValue", built( "Value", read ) } } );
}

}  // namespace Koigen
