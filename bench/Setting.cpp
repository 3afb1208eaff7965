#include "Setting.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <thread>

namespace Bench {
namespace {

std::string firstLine( std::istream && in, std::string const & key ) {
  std::string line;
  while( std::getline( in, line ) )
    if( line.starts_with( key ) )
      return line.substr( line.find_first_not_of( " \t:", key.size() ) );
  return "unknown";
}

std::string outputOf( char const * command ) {
  std::string line = "unknown";
  if( std::FILE * pipe = popen( command, "r" ) ) {
    char text[128];
    if( std::fgets( text, sizeof text, pipe ) )
      line.assign( text, std::find( text, text + sizeof text - 1, '\n' ) );
    pclose( pipe );
  }
  return line;
}

}  // namespace

std::vector< std::pair< std::string, std::string > > setting() {
  return {
      { "cpu", firstLine( std::ifstream( "/proc/cpuinfo" ), "model name" ) },
      { "cores", std::to_string( std::thread::hardware_concurrency() ) },
      { "compiler", LUMO_COMPILER },
      { "build", LUMO_BUILD_TYPE },
      { "commit", outputOf( "git -C '" LUMO_SOURCE "' describe --always --dirty 2>/dev/null" ) } };
}

}  // namespace Bench
