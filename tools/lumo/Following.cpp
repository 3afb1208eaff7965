#include "Following.h"

#include <csignal>
#include <filesystem>

#include <sys/signalfd.h>

#include <quill/SlotTable.h>

namespace Lumo {
namespace {

constexpr Koi::Seconds lookEvery = 0.5;

/// Where interrupts are read from now on, so that what was printed is whole.
int interrupts() {
  sigset_t set;
  sigemptyset( &set );
  sigaddset( &set, SIGINT );
  sigaddset( &set, SIGTERM );
  sigprocmask( SIG_BLOCK, &set, nullptr );
  return signalfd( -1, &set, SFD_CLOEXEC | SFD_NONBLOCK );
}

}  // namespace

void Following::Limits::addTo( CLI::App & command ) {
  command.add_option( "--count", count, "end after so many lines" )->type_name( "N" );
  command.add_option( "--for", duration, "end after that time" )
      ->type_name( "SECONDS" )
      ->check( CLI::PositiveNumber );
}

Following::Following( Mem::RootPath const & root, std::string const & table, Limits const & limits,
                      Output & output )
    : name_( table ),
      path_( root.path() + "/" + table + "/" + Quill::SlotTable::fileName ),
      limits_( limits ),
      output_( output ),
      activity_( Koi::activityFactory() ),
      signals_( interrupts() ),
      interrupt_( activity_.ptr(), signals_.number(), Koi::DescriptorWatch::readable,
                  [this] { activity_->stop(); } ),
      look_( activity_.ptr(), [this] { look(); } ),
      flush_( activity_.ptr(), [this] { output_.flush(); } ),
      wasThere_( isThere() ) {
  look_.delayIs( lookEvery );
}

bool Following::isThere() const {
  std::error_code why;
  return std::filesystem::exists( path_, why );
}

void Following::run() {
  if( limits_.count == 0 )
    return;
  if( limits_.duration > 0 )
    activity_->runFor( limits_.duration );
  else
    activity_->run();
}

bool Following::show( std::string const & line ) {
  if( numShown_ >= limits_.count || !output_.isOpen() )
    return false;
  if( !wasThere_ )
    look();  // why there are changes is said before them
  write( line );
  bool const goesOn = ++numShown_ < limits_.count && output_.isOpen();
  if( !goesOn )
    activity_->stop();
  return goesOn;
}

void Following::write( std::string const & line ) {
  output_.write( line );
  // Changes come in flocks: they are printed at once when none is left to be told.
  if( !flush_.isArmed() )
    flush_.delayIs( 0 );
}

void Following::attached( bool is ) {
  if( wasAttached_ )
    complain( name_ + ( is ? ": its files are others now" : ": its files are gone, or damaged" ) );
  wasAttached_ = true;
}

void Following::look() {
  look_.delayIs( lookEvery );
  bool const is = isThere();
  if( std::exchange( wasThere_, is ) != is )
    complain( name_ + ( is ? ": the table is there now" : ": the table is gone" ) );
}

}  // namespace Lumo
