#include "Memory.h"

#include <fstream>
#include <stdexcept>
#include <string>

#include <malloc.h>

double Bench::bytesOfProcess() {
  malloc_trim( 0 );
  std::ifstream in( "/proc/self/smaps_rollup" );
  double kilobytes;
  for( std::string word; in >> word; )
    if( word == "Pss:" && in >> kilobytes )
      return kilobytes * 1024;
  throw std::runtime_error( "/proc/self/smaps_rollup tells no Pss" );
}
