#include "Keeper.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <system_error>

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Bench {
namespace {

pid_t volatile child = 0;

constexpr int signalsToEnd[] = { SIGINT, SIGTERM, SIGHUP, SIGQUIT };

void passOn( int signal ) {
  if( child > 0 )
    kill( child, signal );
}

[[noreturn]] void fail( char const * what ) {
  throw std::system_error( errno, std::generic_category(), what );
}

}  // namespace

int kept( std::filesystem::path const & parent,
          std::function< int( std::filesystem::path const & ) > const & work ) {
  std::string name = parent / "quillBench-XXXXXX";
  if( !mkdtemp( name.data() ) )
    fail( name.c_str() );
  // Until there is a child to pass them on to, they wait.
  sigset_t toEnd, before;
  sigemptyset( &toEnd );
  for( int const signal : signalsToEnd )
    sigaddset( &toEnd, signal );
  sigprocmask( SIG_BLOCK, &toEnd, &before );
  pid_t const keeper = getpid();
  std::fflush( nullptr );
  child = fork();
  if( child == 0 ) {
    prctl( PR_SET_PDEATHSIG, SIGTERM );
    if( getppid() != keeper )
      _exit( 1 );
    sigprocmask( SIG_SETMASK, &before, nullptr );
    int const status = work( name );
    std::fflush( nullptr );
    _exit( status );
  }
  int const why = errno;
  for( int const signal : signalsToEnd )
    std::signal( signal, passOn );
  sigprocmask( SIG_SETMASK, &before, nullptr );
  int status = 0;
  while( child > 0 && waitpid( child, &status, 0 ) == -1 && errno == EINTR )
    ;
  std::filesystem::remove_all( name );
  if( child == -1 ) {
    errno = why;
    fail( "a process for the benchmark" );
  }
  return WIFEXITED( status ) ? WEXITSTATUS( status ) : 128 + WTERMSIG( status );
}

}  // namespace Bench
