#include "Output.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace Lumo {

void Output::write( std::string_view text ) {
  if( isOpen_ && std::fwrite( text.data(), 1, text.size(), stdout ) != text.size() )
    failed();
}

void Output::flush() {
  if( isOpen_ && std::fflush( stdout ) != 0 )
    failed();
}

void Output::failed() {
  isOpen_ = false;
  if( errno != EPIPE )
    throw Failure( unreachable, std::string( "standard output: " ) + std::strerror( errno ) );
}

void complain( std::string_view text ) {
  std::fprintf( stderr, "lumo: %.*s\n", static_cast< int >( text.size() ), text.data() );
}

}  // namespace Lumo
