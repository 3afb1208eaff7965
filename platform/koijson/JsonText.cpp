#include "JsonText.h"

#include <set>
#include <vector>

namespace Koi {
namespace {

/// Follows the parser through a text, for the members that each object has named so far.
class Names {
 public:
  void operator()( Json::parse_event_t event, Json const & parsed ) {
    using Event = Json::parse_event_t;
    switch( event ) {
      case Event::object_start:
      case Event::array_start:
        levels_.push_back( { .isArray = event == Event::array_start } );
        break;
      case Event::object_end:
      case Event::array_end:
        levels_.pop_back();
        step();
        break;
      case Event::key:
        name( parsed.get_ref< std::string const & >() );
        break;
      case Event::value:
        step();
        break;
    }
  }

 private:
  struct Level {
    bool isArray;
    std::size_t index = 0;            // of an array
    std::set< std::string > names{};  // of an object
    std::string last{};
  };

  /// A value has ended.
  void step() {
    if( !levels_.empty() && levels_.back().isArray )
      ++levels_.back().index;
  }
  void name( std::string const & given ) {
    Level & level = levels_.back();
    if( !level.names.insert( given ).second ) {
      std::string path;
      for( std::size_t i = 0; i + 1 < levels_.size(); ++i )
        path += "/" + ( levels_[i].isArray ? std::to_string( levels_[i].index ) : levels_[i].last );
      throw JsonException( ( path.empty() ? "" : path + ": " ) + '"' + given +
                           "\" stands there twice" );
    }
    level.last = given;
  }

  std::vector< Level > levels_;
};

}  // namespace

Json parsedJson( std::string_view text ) {
  Names names;
  try {
    return Json::parse( text, [&]( int, Json::parse_event_t event, Json & parsed ) {
      names( event, parsed );
      return true;
    } );
  } catch( Json::exception const & e ) {
    // The parser's text begins with its own number of the fault: "[json.exception.parse_error.101]
    // ".
    std::string_view const what = e.what();
    throw JsonException( std::string( what.substr( what.find( "] " ) + 2 ) ) );
  }
}

}  // namespace Koi
