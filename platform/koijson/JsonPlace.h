// JsonPlace.h: a value in a JSON text with the path to it, so that every refusal says where.
// Private to the room.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include <koi/Exception.h>
#include <koijson/JsonException.h>

namespace Koi {

using Json = nlohmann::json;

struct JsonPlace {
  Json const & json;
  std::string path;  ///< "/switchIntfConfig/eth3/1/vlanTpid": names as they stand, '/' and all

  /// A member of the object that stands here, an element of the array.
  JsonPlace at( std::string const & name ) const { return { json.at( name ), path + "/" + name }; }
  JsonPlace at( std::size_t index ) const {
    return { json.at( index ), path + "/" + std::to_string( index ) };
  }

  /// Raises JsonException "<path>: <why>"; the why alone for the whole text.
  [[noreturn]] void refuse( std::string const & why ) const;
  /// Raises JsonException "<path>: a string was expected, not a number", of whatever is not so.
  void require( bool isSo, char const * expected ) const;

  /// What `work` gives; what the library refuses in it is refused here.
  template< class Work >
  auto refusing( Work && work ) const {
    try {
      return work();
    } catch( Exception const & e ) {
      refuse( e.what() );
    }
  }
};

}  // namespace Koi
