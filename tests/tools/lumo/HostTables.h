// HostTables.h: tables of hosts, written in the test or by a process of its own, and the program as
// a user runs it on them.
#pragma once

#include <csignal>
#include <functional>

#include <gtest/gtest.h>

#include <Lumo/QuillBridging.h>
#include <sys/wait.h>

#include "src/quill/ProofValue.h"
#include "support/Shell.h"

namespace Tests {

using Host = Quill::Bridging::QuillFdbStatus;
using HostWriter = Quill::QuillWriter< Host >;
using Koi::U32;
using Koi::U8;

inline Ntrace::Handler const quietTrace( -1, {} );

inline Host host( U32 n, U32 moves = 0,
                  Bridging::EntryType type = Bridging::EntryType::learnedDynamicMac ) {
  return { { Bridging::Fid( 1 + n / 256 ), Wirex::EthAddr( 0, 0, 0x5e, 0, 0x53, U8( n ) ) },
           Wirex::IntfId( Koi::String8( "eth" + std::to_string( 1 + ( n + moves ) % 8 ) ) ),
           moves,
           0.5 * n,
           type };
}

/// The program beside the test, until it is interrupted.
class Started {
 public:
  Started( std::string const & root, std::string const & arguments ) {
    std::string const command = "LUMO_SHM_ROOT=" + root + " exec " LUMO_PROGRAM " " + arguments +
                                " >" + out_.path() + " 2>" + err_.path();
    child_ = fork();
    if( child_ == 0 ) {
      execl( "/bin/sh", "sh", "-c", command.c_str(), nullptr );
      _exit( 127 );
    }
  }
  ~Started() {
    if( child_ > 0 )
      interrupted();
  }
  Started( Started const & ) = delete;

  /// Waits until it has printed that; how long depends on who else is at work.
  void shows( std::string const & text ) const {
    for( int i = 0; i < 6000; ++i ) {
      if( ( out() + err() ).find( text ) != std::string::npos )
        return;
      usleep( 10000 );
    }
    FAIL() << text << " is not in " << out() << err();
  }
  std::string out() const { return TestSupport::contents( out_ ); }
  std::string err() const { return TestSupport::contents( err_ ); }
  /// Its exit status.
  int interrupted() {
    int status = -1;
    kill( child_, SIGINT );
    EXPECT_EQ( waitpid( std::exchange( child_, 0 ), &status, 0 ) > 0, true );
    return WIFEXITED( status ) ? WEXITSTATUS( status ) : -1;
  }

 private:
  TestSupport::SavedFile const out_{ "" }, err_{ "" };
  pid_t child_;
};

struct HostTables : testing::Test {
  HostWriter writer( char const * name = "mac" ) const {
    auto parameters = proofParameters( 1 << 16 );
    parameters.seed = 7;
    return HostWriter( shm.root(), name, parameters, quietTrace );
  }
  void fill( char const * name, U32 count ) const {
    auto w = writer( name );
    for( U32 n = 0; n < count; ++n )
      w.write( host( n ) );
  }
  /// A process that does that to the table, again and again until it is killed.
  pid_t process( std::function< void( HostWriter & ) > const & work,
                 char const * name = "mac" ) const {
    int ready[2];
    EXPECT_EQ( pipe( ready ), 0 );
    pid_t const child = fork();
    if( child == 0 ) {
      auto w = writer( name );
      static_cast< void >( write( ready[1], "", 1 ) == 1 );
      for( ;; )
        work( w );
    }
    close( ready[1] );
    char byte;
    EXPECT_EQ( read( ready[0], &byte, 1 ), 1 );
    close( ready[0] );
    return child;
  }
  static void end( pid_t child ) {
    EXPECT_EQ( kill( child, SIGKILL ), 0 );
    EXPECT_EQ( waitpid( child, nullptr, 0 ), child );
  }

  TestSupport::Outcome run( std::string const & arguments, std::string const & before = {} ) const {
    return TestSupport::shell( LUMO_PROGRAM, "export LUMO_SHM_ROOT=" + shm.path() + "; " + before +
                                                 " $program " + arguments );
  }
  /// What a failing command says on standard error.
  std::string refused( std::string const & arguments, int status ) const {
    auto const outcome = run( arguments );
    EXPECT_EQ( outcome.status, status ) << arguments << outcome.out << outcome.err;
    return outcome.err;
  }

  ShmRoot const shm;
};

}  // namespace Tests
