#include "JsonText.h"

#include <set>
#include <vector>

namespace Koi {
namespace {

/// Walks through a text, and refuses a name that an object has named before. The parser's own
/// callback would do, but looks at all members of an object again whenever one of them ends.
class Names final : public Json::json_sax_t {
 public:
  bool null() override { return step(); }
  bool boolean( bool ) override { return step(); }
  bool number_integer( number_integer_t ) override { return step(); }
  bool number_unsigned( number_unsigned_t ) override { return step(); }
  bool number_float( number_float_t, string_t const & ) override { return step(); }
  bool string( string_t & ) override { return step(); }
  bool binary( binary_t & ) override { return step(); }
  bool start_object( std::size_t ) override { return begin( false ); }
  bool start_array( std::size_t ) override { return begin( true ); }
  bool end_object() override { return end(); }
  bool end_array() override { return end(); }
  bool parse_error( std::size_t, std::string const &, Json::exception const & ) override {
    return false;
  }

  bool key( string_t & given ) override {
    Level & level = levels_.back();
    if( !level.names.insert( given ).second )
      throw JsonException( place() + '"' + given + "\" stands there twice" );
    level.last = given;
    return true;
  }

 private:
  struct Level {
    bool isArray;
    std::size_t index = 0;            // of an array
    std::set< std::string > names{};  // of an object
    std::string last{};
  };

  bool begin( bool isArray ) {
    levels_.push_back( { .isArray = isArray } );
    return true;
  }
  bool end() {
    levels_.pop_back();
    return step();
  }
  /// A value has ended.
  bool step() {
    if( !levels_.empty() && levels_.back().isArray )
      ++levels_.back().index;
    return true;
  }

  /// The path to the innermost object, for a message.
  std::string place() const {
    std::string path;
    for( std::size_t i = 0; i + 1 < levels_.size(); ++i )
      path += "/" + ( levels_[i].isArray ? std::to_string( levels_[i].index ) : levels_[i].last );
    return path.empty() ? path : path + ": ";
  }

  std::vector< Level > levels_;
};

}  // namespace

Json parsedJson( std::string_view text ) {
  Json json;
  try {
    json = Json::parse( text );
  } catch( Json::exception const & e ) {
    // What the parser says begins with its own number of the fault:
    // "[json.exception.parse_error.101] ".
    std::string_view const what = e.what();
    throw JsonException( std::string( what.substr( what.find( "] " ) + 2 ) ) );
  }
  Names names;
  Json::sax_parse( text, &names );
  return json;
}

}  // namespace Koi
