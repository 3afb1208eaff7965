// Replay.cpp: runs a fuzz target over known inputs, where libFuzzer is not linked in.
//
// Arguments are files and folders of files. Each file is given whole and cut short at every 1/64th
// of its length, so that a parser also meets every kind of early end. A fault ends the process.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput( std::uint8_t const * data, std::size_t size );

namespace {

std::size_t numRuns = 0;

// A copy of its own for each run: a read past the end is then a read past the block's end.
void run( std::string const & whole, std::size_t size ) {
  std::vector< std::uint8_t > const input( whole.begin(),
                                           whole.begin() + static_cast< std::ptrdiff_t >( size ) );
  LLVMFuzzerTestOneInput( input.data(), input.size() );
  ++numRuns;
}

void replay( std::filesystem::path const & file ) {
  std::ifstream stream( file, std::ios::binary );
  if( !stream ) {
    std::cerr << file.string() << ": cannot be read\n";
    std::exit( 2 );
  }
  std::string const whole( std::istreambuf_iterator< char >( stream ), {} );
  std::size_t const step = whole.size() / 64 + 1;
  for( std::size_t size = 0; size < whole.size(); size += step )
    run( whole, size );
  run( whole, whole.size() );
}

}  // namespace

int main( int argc, char ** argv ) {
  for( int i = 1; i < argc; ++i ) {
    if( !std::filesystem::is_directory( argv[i] ) ) {
      replay( argv[i] );
      continue;
    }
    for( auto const & entry : std::filesystem::recursive_directory_iterator( argv[i] ) )
      if( entry.is_regular_file() )
        replay( entry.path() );
  }
  std::cout << numRuns << " inputs\n";
  return numRuns > 0 ? 0 : 1;
}
