#include "JsonPlace.h"

namespace Koi {
namespace {

char const * kindOf( Json const & json ) {
  switch( json.type() ) {
    case Json::value_t::object:
      return "an object";
    case Json::value_t::array:
      return "an array";
    case Json::value_t::string:
      return "a string";
    case Json::value_t::boolean:
      return json.get< bool >() ? "true" : "false";
    case Json::value_t::null:
      return "null";
    default:
      return "a number";
  }
}

}  // namespace

void JsonPlace::refuse( std::string const & why ) const {
  throw JsonException( path.empty() ? why : path + ": " + why );
}

void JsonPlace::require( bool isSo, char const * expected ) const {
  if( !isSo )
    refuse( std::string( expected ) + " was expected, not " + kindOf( json ) );
}

}  // namespace Koi
