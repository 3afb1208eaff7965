// WriterBeside.h: a writer that overwrites random entries of a peer as fast as it can, in a thread
// or in a process of its own, for as long as this lives.
#pragma once

#include <atomic>
#include <cerrno>
#include <csignal>
#include <new>
#include <system_error>
#include <thread>

#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Peer.h"

namespace Bench {

template< Peer P >
class WriterBeside {
 public:
  /// Returns when the writer has begun to write.
  WriterBeside( P & peer, Keys const & keys ) {
    void * const page = mmap( nullptr, sizeof( Shared ), PROT_READ | PROT_WRITE,
                              MAP_SHARED | MAP_ANONYMOUS, -1, 0 );
    if( page == MAP_FAILED )
      throw std::system_error( errno, std::generic_category(), "a page to share with the writer" );
    shared_ = new( page ) Shared;
    if constexpr( P::beside == Beside::process ) {
      child_ = fork();
      if( child_ == -1 )
        throw std::system_error( errno, std::generic_category(), "a process for the writer" );
      if( child_ == 0 ) {
        prctl( PR_SET_PDEATHSIG, SIGKILL );
        if constexpr( WantsAfterFork< P > )
          peer.afterFork();
        writeUntilStopped( peer, keys );
        _exit( 0 );
      }
    } else {
      thread_ = std::thread( [this, &peer, &keys] { writeUntilStopped( peer, keys ); } );
    }
    while( numWritten() == 0 && !gone() )
      std::this_thread::yield();
  }
  ~WriterBeside() {
    // It ends by itself, for ended from outside it might leave a lock behind.
    shared_->stop = true;
    if( thread_.joinable() )
      thread_.join();
    if( child_ > 0 )
      waitpid( child_, nullptr, 0 );
    munmap( shared_, sizeof( Shared ) );
  }
  WriterBeside( WriterBeside const & ) = delete;
  WriterBeside & operator=( WriterBeside const & ) = delete;

  std::uint64_t numWritten() const { return shared_->numWritten; }

 private:
  struct Shared {
    std::atomic< bool > stop{ false };
    alignas( 64 ) std::atomic< std::uint64_t > numWritten{ 0 };
  };

  bool gone() {
    if( child_ <= 0 || waitpid( child_, nullptr, WNOHANG ) == 0 )
      return false;
    child_ = 0;
    return true;
  }

  void writeUntilStopped( P & peer, Keys const & keys ) {
    typename P::Writer writer( peer );
    std::size_t at = keys.probes.size() / 2;
    for( std::uint32_t generation = 1; !shared_->stop; ++generation ) {
      for( unsigned i = 0; i < 16; ++i )
        writer.overwrite( recordOf( keys.probes[at + i], generation ) );
      at = ( at + 16 ) % keys.probes.size();
      shared_->numWritten += 16;
    }
  }

  Shared * shared_;
  std::thread thread_;
  pid_t child_ = 0;
};

}  // namespace Bench
