// vlan-endpoints: stations in many VLANs of one Ethernet device. README.md in this folder says
// more.
//
// Exit status: 0 when it was interrupted or its time was over; 2 for a wrong argument or a device
// that cannot be opened.

#include <fmt/format.h>
#include <reactors/VlanMuxDemux.h>
#include <sys/signalfd.h>
#include <vlan-endpoints/Options.h>
#include <vlan-endpoints/Report.h>

#include <csignal>

namespace {

/// SIGINT and SIGTERM, to be read.
int stopSignals() {
  sigset_t signals;
  sigemptyset( &signals );
  sigaddset( &signals, SIGINT );
  sigaddset( &signals, SIGTERM );
  sigprocmask( SIG_BLOCK, &signals, nullptr );
  return signalfd( -1, &signals, SFD_CLOEXEC | SFD_NONBLOCK );
}

void run( VlanEndpoints::Options const & options ) {
  auto const mux =
      Lumo::vlanMuxDemuxFactory( nullptr, options.device, Bridging::VlanIdOrNone(), false );
  VlanEndpoints::Stations stations;
  for( auto const & [vlan, address] : options.addresses )
    stations[vlan] =
        std::make_unique< VlanEndpoints::Station >( mux->manyPamIs( vlan ), options.eth, address );
  Koi::Activity * const activity = Koi::defaultActivity();
  Koi::DescriptorWatch const stopping( activity, stopSignals(), Koi::DescriptorWatch::readable,
                                       [&] { activity->stop(); } );
  fmt::print( "ready\n" );
  std::fflush( stdout );
  if( options.duration )
    activity->runFor( *options.duration );
  else
    activity->run();
  fmt::print( "{}", VlanEndpoints::reportOf( stations, *mux ) );
}

}  // namespace

int main( int argc, char ** argv ) {
  VlanEndpoints::Options options;
  if( auto const status = VlanEndpoints::readCommandLine( argc, argv, options ) )
    return *status;
  try {
    run( options );
  } catch( Wirex::DeviceException const & e ) {
    fmt::print( stderr, "vlan-endpoints: {}\n", e.what() );
    return 2;
  }
}
