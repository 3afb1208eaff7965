#include <ntrace/Ntrace.h>

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace Ntrace {
namespace {

int levelOfEnvironment() {
  char const * const text = std::getenv( "LUMO_TRACE" );
  int level = 0;
  if( text )
    std::from_chars( text, text + std::strlen( text ), level );
  return level;
}

}  // namespace

Handler::Handler()
    : level_( levelOfEnvironment() ), sink_( []( int, std::string const & line ) {
        std::fprintf( stderr, "%s\n", line.c_str() );
      } ) {}

Handler const & standard() {
  static Handler const handler;
  return handler;
}

}  // namespace Ntrace
