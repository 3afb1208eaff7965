#include "contract/Expected.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string_view>

#include <koi/Value.h>

#include "support/Murmur3.h"

namespace Tests {
namespace {

using namespace std::string_literals;

struct Exempt {
  std::string_view type;
  Rule rule;
  bool ( *when )( std::string const & log );
  char const * why;
};

bool always( std::string const & ) { return true; }
bool noNumber( std::string const & log ) {
  return ( log[0] & 0x7f ) == 0x7f && ( log[1] & 0xf0 ) == 0xf0;
}
bool aNaN( std::string const & log ) { return log == "\x7f\xf8\0\0\0\0\0\0"s; }
bool noKind( std::string const & log ) { return static_cast< unsigned char >( log[0] ) > 2; }

constexpr Exempt exempt[] = {
    { "Koi::Seconds", readFromText, noNumber, "only finite numbers are read" },
    { "Koi::Seconds", logIsKept, aNaN, "every NaN is written alike" },
    { "Bridging::BridgeId", readFromText, noKind, "a number that is no kind prints nothing" },
    { "Bridging::BridgeId", oneSpelling, always,
      "the enumerators' names are read besides the printed words; numbers are cut to 24 bits" },
    { "Bridging::BridgeId", printsItsField, always, "its text is a word and a number" },
    { "Wirex::PseudowireIntfId", readFromText, always, "it is read by localIntfIdFromString()" },
    { "Wirex::PseudowireIntfId", printsItsField, always, "its text is the interface's name" },
};

/// Hand-written types hash the bytes of their log, but these hash them from the last to the first.
constexpr std::string_view hashedBackwards[] = { "Wirex::IntfId" };

std::string reversed( std::string bytes ) {
  std::reverse( bytes.begin(), bytes.end() );
  return bytes;
}

bool isPlain( KoiType const * type ) {
  return type->kind == KoiType::enumeration ||
         ( type->kind == KoiType::primitive && !type->hashable );
}

/// What a value gives to the hash of what it stands in: its blocks, and its narrow bytes.
void gather( GenericIf const & v, std::string & blocks, std::string & narrow ) {
  KoiType const * type = v.type();
  if( !isPlain( type ) || isString( type ) ) {
    Koi::U32 const word = expectedHash( v );
    for( int shift = 0; shift < 32; shift += 8 )
      blocks += static_cast< char >( word >> shift );
    return;
  }
  std::string bytes = logOf( v );
  if( type == &Koi::koiTypeSeconds ) {
    Koi::Seconds const s = *Koi::valueIn< Koi::Seconds >( v );
    if( s == 0 )
      bytes.assign( 8, '\0' );
    if( std::isnan( s ) )
      bytes = "\x7f\xf8\0\0\0\0\0\0"s;
  }
  ( bytes.size() < 4 ? narrow : blocks ) += reversed( bytes );
}

}  // namespace

char const * exemption( GenericIf const & v, Rule rule ) {
  for( auto const & inside : allIn( v ) )
    for( auto const & row : exempt )
      if( row.rule == rule && row.type == inside->type()->name && row.when( logOf( *inside ) ) )
        return row.why;
  return nullptr;
}

Koi::U32 expectedHash( GenericIf const & v ) {
  KoiType const * type = v.type();
  if( isString( type ) )
    return murmur3( logOf( v ).substr( 4 ) );
  std::string blocks, narrow;
  if( isPlain( type ) )
    gather( v, blocks, narrow );
  else if( type->kind == KoiType::primitive )
    blocks = std::ranges::count( hashedBackwards, std::string_view( type->name ) )
                 ? reversed( logOf( v ) )
                 : logOf( v );
  else if( !type->hashable ) {
    // A single-field type without hash() is its own number.
    Koi::U32 number = 0;
    for( unsigned char byte : logOf( v ) )
      number = number << 8 | byte;
    return number;
  } else
    for( auto const & field : fieldsOf( v ) )
      gather( *field, blocks, narrow );
  return murmur3( blocks + narrow );
}

bool expectedHashable( KoiType const * type ) {
  return type->kind != KoiType::structure ||
         ( type->hashable && std::ranges::all_of( type->fields, []( auto const & field ) {
             return expectedHashable( field.type );
           } ) );
}

std::partial_ordering expectedOrder( GenericIf const & a, GenericIf const & b ) {
  KoiType const * type = a.type();
  if( std::string_view( type->name ) == "Lumo::SourcePriorityPair" ) {  // the higher priority first
    auto const order = expectedOrder( *fieldOf( b, 1 ), *fieldOf( a, 1 ) );
    return order != 0 ? order : expectedOrder( *fieldOf( a, 0 ), *fieldOf( b, 0 ) );
  }
  for( std::size_t i = 0; i < type->fields.size(); ++i )
    if( auto const order = expectedOrder( *fieldOf( a, i ), *fieldOf( b, i ) ); order != 0 )
      return order;
  if( !type->fields.empty() )
    return std::partial_ordering::equivalent;
  if( type == &Koi::koiTypeSeconds )
    return *Koi::valueIn< Koi::Seconds >( a ) <=> *Koi::valueIn< Koi::Seconds >( b );
  std::string left = logOf( a ), right = logOf( b );
  if( type == &Koi::koiTypeI32 ) {
    left[0] ^= '\x80';
    right[0] ^= '\x80';
  }
  // A string's length comes first in the log, but last in the order.
  std::size_t const from = isString( type ) ? 4 : 0;
  int const bytes = std::memcmp( left.data() + from, right.data() + from,
                                 std::min( left.size(), right.size() ) - from );
  return bytes != 0 ? bytes <=> 0 : left.size() <=> right.size();
}

std::string structureText( KoiType const * type, std::vector< std::string > const & fields ) {
  std::string text = std::string( "Value('" ) + type->name + "', ** {";
  for( std::size_t i = 0; i < fields.size(); ++i )
    text += ( i == 0 ? "'" : ", '" ) + std::string( type->fields[i].name ) + "': " + fields[i];
  return text + "})";
}

std::string textOf( GenericIf const & v ) { return std::string( v.strRep().view() ); }

}  // namespace Tests
