// Model.cpp: fuzz target: a model file of any content is refused in the form that editors jump to,
// or becomes a header and a source.

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <sstream>

#include <koigen/Checker.h>
#include <koigen/Emitter.h>

#include "Require.h"

namespace {

constexpr char file[] = "M.koi";

/// Steps over ":" and a number from 1 on; 0 when there is none.
std::size_t numberAfterColon( std::string_view & rest ) {
  std::size_t number = 0;
  if( !rest.starts_with( ':' ) )
    return 0;
  auto const done = std::from_chars( rest.data() + 1, rest.data() + rest.size(), number );
  rest.remove_prefix( static_cast< std::size_t >( done.ptr - rest.data() ) );
  return number;
}

/// "M.koi:7:15: text", the line being one of the model's.
bool isError( std::string_view error, std::size_t numLines ) {
  if( !error.starts_with( file ) )
    return false;
  error.remove_prefix( sizeof file - 1 );
  std::size_t const line = numberAfterColon( error ), column = numberAfterColon( error );
  return line >= 1 && line <= numLines && column >= 1 && error.starts_with( ": " ) &&
         error.size() > 2;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput( std::uint8_t const * data, std::size_t size ) {
  std::string_view const text( reinterpret_cast< char const * >( data ), size );
  auto const numLines = static_cast< std::size_t >( std::ranges::count( text, '\n' ) ) + 1;
  Koigen::Model model;
  try {
    model = Koigen::parsedText( text, file );
  } catch( Koigen::ModelError const & refusal ) {
    std::istringstream errors( refusal.what() );
    std::string error;
    do {
      std::getline( errors, error );
      Fuzz::require( isError( error, numLines ), "a refusal says file, line and column",
                     refusal.what() );
    } while( errors.peek() != std::istringstream::traits_type::eof() );
    return 0;
  }
  for( Koigen::Module const & module : model.modules )
    if( !Koigen::isForeign( module ) ) {
      Fuzz::require( !Koigen::headerOf( model, module ).empty(), "a header is written",
                     module.name );
      Fuzz::require( !Koigen::sourcesOf( model, module, 1 ).empty(), "a source is written",
                     module.name );
    }
  return 0;
}
