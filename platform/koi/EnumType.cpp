#include <koi/EnumType.h>

#include <algorithm>
#include <limits>

namespace Koi {

EnumEntry const * EnumType::entry( U32 value ) const {
  auto const it = std::ranges::find( entries, value, &EnumEntry::value );
  return it == entries.end() ? nullptr : &*it;
}

EnumEntry const * EnumType::entry( std::string_view enumerator ) const {
  auto const it =
      std::ranges::find_if( entries, [&]( EnumEntry const & e ) { return e.name == enumerator; } );
  return it == entries.end() ? nullptr : &*it;
}

String8 EnumType::stringValue( U32 value ) const {
  EnumEntry const * known = entry( value );
  return known ? String8( known->name ) : valueToStrep( value );
}

U32 EnumType::value( std::string_view enumerator ) const {
  EnumEntry const * known = entry( enumerator );
  if( !known )
    throwParseException( std::string( name ) + " has no enumerator '" + std::string( enumerator ) +
                         "'" );
  return known->value;
}

U32 EnumType::sequenceToValue( String8::IteratorConst & it,
                               String8::IteratorConst const & end ) const {
  String8::IteratorConst const start = it;
  if( EnumEntry const * known = entry( identifierFromText( it, end ) ) )
    return known->value;
  if( it == start && it != end && *it >= '0' && *it <= '9' ) {
    auto const value =
        static_cast< U32 >( numberFromText( it, end, std::numeric_limits< U32 >::max() ) );
    if( !entry( value ) )
      return value;
  }
  throwParseException( "an enumerator of " + std::string( name ) + " was expected at '" +
                       restForMessage( start, end ) + "'" );
}

}  // namespace Koi
