// CountersClear.cpp: `lumo clear counters vlan`: asks the agent that counts to begin anew, and
// waits until it has.
#include <algorithm>

#include "CounterRecords.h"
#include "CountersGroup.h"
#include "Subcommands.h"
#include "VlanList.h"
#include "Waiting.h"

namespace Lumo {
namespace {

using Bridging::VlanId;

constexpr Koi::Seconds farewell = 1;  // so long may taking requests back last

class CountersClear final : public Subcommand {
 public:
  explicit CountersClear( CLI::App & clear )
      : Subcommand( countersGroup( clear, "begins to count anew" ), "vlan",
                    "clears the counters of VLANs" ) {
    command()
        .add_option( "VLANS", vlans_, "these VLANs, 1,10-20, or all" )
        ->type_name( "" )
        ->capture_default_str();
  }

  Status run( Output & output ) const override;

 private:
  class Asking;

  std::string vlans_ = "all";
};

/// The requests, as the agent has them.
class CountersClear::Asking {
 public:
  explicit Asking( std::string const & socket )
      : mount_( requests_, socket, Coredb::Access::writable ) {
    if( waitUntil( mount_, [this] { return mount_.isSynchronised(); } ) )
      return;
    if( !mount_.isConnected() )
      throw Failure( unreachable, "no agent clears counters: " + mount_.trouble() );
    throw Failure( unreachable, "the agent that counts does not answer" );
  }

  /// Raises Failure when not all are cleared.
  void clear( VlanSet const & vlans ) {
    for( VlanId const & vlan : vlans )
      requests_->clearCountersRequestIs( vlan, true );
    VlanSet left = vlans;
    bool const isCleared = waitUntil( mount_, [&] {
      std::erase_if( left, [this]( VlanId const & vlan ) {
        return !requests_->clearCountersRequest().contains( vlan );
      } );
      return left.empty();
    } );
    if( isCleared )
      return;
    if( !mount_.isConnected() )
      throw Failure( unreachable, "the agent that counts has ended: " + mount_.trouble() );
    for( VlanId const & vlan : left )
      requests_->clearCountersRequestDel( vlan );
    auto const areTakenBack = [this] { return mount_.isAcknowledged(); };
    waitUntil( mount_, areTakenBack, farewell );
    throw Failure( unreachable, notClearedText( vlansText( left ) ) );
  }

 private:
  Koi::Ptr< Bridging::VlanCountersCliReq > const requests_ =
      Bridging::vlanCountersCliReqFactory( Koi::Name( "vlanCountersCliReq" ) );
  Coredb::TreeMount mount_;
};

Status CountersClear::run( Output & output ) const {
  VlanSet wanted = vlans_ == "all" ? VlanSet() : vlansOf( vlans_ );
  Asking asking( root().path() + "/" + vlanCounterTable + "/requests" );
  auto const records = counterRecordsOf( root(), vlanCounterTable );
  if( vlans_ == "all" )
    for( auto const & [vlan, record] : records )
      wanted.insert( vlan );
  asking.clear( wanted );

  VlanSet cleared, missing;
  for( VlanId const & vlan : wanted )
    ( records.count( vlan ) != 0 ? cleared : missing ).insert( vlan );
  output.write( cleared.empty() ? "nothing to clear\n"
                                : "cleared: " + vlansText( cleared ) + "\n" );
  if( missing.empty() )
    return succeeded;
  complain( vlansText( missing ) + ": no counters" );
  return absent;
}

}  // namespace

std::unique_ptr< Subcommand > clearVlanCounters( CLI::App & clear ) {
  return std::make_unique< CountersClear >( clear );
}

}  // namespace Lumo
