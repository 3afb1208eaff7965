#include "ValueFromJson.h"

#include <algorithm>
#include <array>

#include <koi/FieldOf.h>
#include <koi/Value.h>
#include <koijson/NearestName.h>
#include <koijson/ValueName.h>

#include "JsonForm.h"

namespace Koi {
namespace {

GenericIfPtr ofNumber( KoiType const * type, JsonPlace const & place ) {
  Json const & json = place.json;
  place.require( json.is_number(), "a number" );
  if( json.is_number_float() )
    place.refuse( "a whole number was expected, not " + json.dump() );
  if( !json.is_number_unsigned() && type != &koiTypeI32 )
    place.refuse( json.dump() + " < 0 not allowed" );
  // The text of a number is how JSON writes it, and its parser knows the type's own bounds.
  return place.refusing(
      [&] { return type->genericIfFromStrRep( type, String8( json.dump() ), nullptr ); } );
}

void requireSettled( KoiType const * type, SettledField const & settled, GenericIf const & given,
                     JsonPlace const & place ) {
  if( !isSame( given, *settled.value ) )
    place.refuse( std::string( type->name ) + "::" + type->fields[settled.index].name + " is " +
                  std::string( settled.value->strRep() ) + " here, not " +
                  std::string( given.strRep() ) );
}

GenericIfPtr ofFields( KoiType const * type, JsonPlace const & place, GenericIfPtr const & present,
                       SettledField const & settled ) {
  // 1. Every member names a field.
  std::vector< std::string_view > names;
  for( KoiAttribute const & field : type->fields )
    names.push_back( field.name );
  for( auto const & [name, v] : place.json.items() )
    if( std::ranges::find( names, name ) == names.end() )
      place.at( name ).refuse( std::string( type->name ) + " has no field \"" + name + "\"" +
                               didYouMean( name, names ) );
  // 2. Each field: as given, as settled, as it is. One that is left out may be one that has to be
  // given.
  CtorArgs args;
  std::string leftOut;
  try {
    for( std::size_t i = 0; i < type->fields.size(); ++i ) {
      KoiAttribute const & field = type->fields[i];
      GenericIfPtr const before = present ? fieldOf( *present, i ) : nullptr;
      if( place.json.contains( field.name ) ) {
        JsonPlace const at = place.at( field.name );
        bool const isZero = field.zeroAdmitted && at.json == 0;
        args.push_back( isZero ? zeroOf( field.type ) : valueFromJson( field.type, at, before ) );
        if( i == settled.index )
          requireSettled( type, settled, *args.back(), at );
      } else if( i == settled.index ) {
        args.push_back( settled.value );
      } else {
        ( leftOut += leftOut.empty() ? "" : ", " ) += field.name;
        args.push_back( before ? before : zeroOf( field.type ) );
      }
    }
    return type->genericIfFromCtorArgs( type, args, nullptr );
  } catch( RangeException const & e ) {
    place.refuse( e.what() + ( leftOut.empty() ? "" : "; left out: " + leftOut ) );
  }
}

}  // namespace

GenericIfPtr valueFromJson( KoiType const * type, JsonPlace const & place,
                            GenericIfPtr const & present, SettledField const & settled ) {
  Json const & json = place.json;
  switch( jsonFormOf( type ) ) {
    case JsonForm::boolean:
      place.require( json.is_boolean(), "true or false" );
      return genericIf( json.get< bool >() );
    case JsonForm::seconds:
      place.require( json.is_number(), "a number" );
      return genericIf( json.get< Seconds >() );
    case JsonForm::wholeNumber:
      return ofNumber( type, place );
    case JsonForm::object:
      if( json.is_object() )
        return ofFields( type, place, present, settled );
      place.require( json.is_string(), "an object" );
      break;
    default:
      place.require( json.is_string(), "a string" );
  }
  GenericIfPtr const v =
      place.refusing( [&] { return valueFromName( type, json.get< std::string >() ); } );
  if( settled.value )
    requireSettled( type, settled, *fieldOf( *v, settled.index ), place );
  return v;
}

GenericIfPtr zeroOf( KoiType const * type ) {
  // What zero bytes of a log read as; no value without a string in it takes as many as these.
  static constexpr std::array< U8, 1024 > zeros{};
  NboAttrLog::In in( zeros.data(), zeros.size() );
  return type->logRead( in );
}

bool isSame( GenericIf const & a, GenericIf const & b ) {
  GenericIfOp const equal{ GenericIfOp::noAttribute, GenericIfOp::equal };
  return *valueIn< bool >(
      *a.type()->genericIfAttributeOp( a, equal, CtorArgs{ GenericIfPtr( &b ) }, nullptr ) );
}

}  // namespace Koi
