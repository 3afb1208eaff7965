#include "WriterLocks.h"

#include <cstdio>
#include <fstream>
#include <sstream>

#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace Lumo {

WriterLocks::WriterLocks() {
  // 1: FLOCK  ADVISORY  WRITE 2441 00:1b:10542 0 EOF
  std::ifstream list( "/proc/locks" );
  for( std::string line; std::getline( list, line ); ) {
    std::istringstream words( line );
    std::string number, kind, manner, access, file;
    pid_t process = 0;
    unsigned major = 0, minor = 0;
    unsigned long long inode = 0;
    if( words >> number >> kind >> manner >> access >> process >> file && kind == "FLOCK" &&
        access == "WRITE" &&
        std::sscanf( file.c_str(), "%x:%x:%llu", &major, &minor, &inode ) == 3 )
      locks_.push_back( { makedev( major, minor ), static_cast< ino_t >( inode ), process } );
  }
}

std::optional< pid_t > WriterLocks::writerOf( std::string const & tablePath ) const {
  struct stat about {};
  if( lstat( ( tablePath + "/lock" ).c_str(), &about ) == 0 )
    for( Lock const & lock : locks_ )
      if( lock.device == about.st_dev && lock.inode == about.st_ino )
        return lock.process;
  return std::nullopt;
}

}  // namespace Lumo
