// ServerProcess.h: a server of our own in a process of its own. It ends with this object, and with
// this process however that ends.
#pragma once

#include <csignal>
#include <string>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Peer.h"

namespace Bench {

class ServerProcess {
 public:
  /// Runs the command and waits until it answers. Throws Unavailable "<name> does not start".
  template< class Answers >
  ServerProcess( std::vector< std::string > command, Answers answers ) {
    pid_t const parent = getpid();
    child_ = fork();
    if( child_ == 0 ) {
      prctl( PR_SET_PDEATHSIG, SIGKILL );
      if( getppid() != parent )
        _exit( 1 );
      int const nowhere = open( "/dev/null", O_RDWR );
      for( int const descriptor : { 0, 1, 2 } )
        dup2( nowhere, descriptor );
      std::vector< char * > words;
      for( auto & word : command )
        words.push_back( word.data() );
      words.push_back( nullptr );
      execvp( words[0], words.data() );
      _exit( 127 );
    }
    for( int tries = 0; child_ > 0 && tries < 1000; ++tries ) {
      if( waitpid( child_, nullptr, WNOHANG ) != 0 )
        child_ = -1;
      else if( answers() )
        return;
      std::this_thread::sleep_for( std::chrono::milliseconds( 10 ) );
    }
    stop();
    throw Unavailable( command[0] + " does not start" );
  }
  ~ServerProcess() { stop(); }
  ServerProcess( ServerProcess const & ) = delete;
  ServerProcess & operator=( ServerProcess const & ) = delete;

 private:
  void stop() {
    if( child_ <= 0 )
      return;
    kill( child_, SIGKILL );
    waitpid( child_, nullptr, 0 );
  }

  pid_t child_ = -1;
};

}  // namespace Bench
