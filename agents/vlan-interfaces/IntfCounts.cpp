#include "IntfCounts.h"

#include <wirex/NumberedIntfId.h>

#include <vector>

namespace VlanInterfaces {

using namespace Interface;
using Wirex::IntfId;

IntfCounts::IntfCounts( Koi::Ptr< AllVlanIntfCounterQuill > table,
                        Koi::Ptr< VlanIntfCounterWriterStatus const > listed,
                        Koi::Ptr< VlanIntfStatusDir const > statuses )
    : table_( std::move( table ) ),
      listed_( std::move( listed ) ),
      statuses_( std::move( statuses ) ) {}

VlanIntfCounterQuill IntfCounts::recordOf( VlanIntfStatus const & status, Koi::Seconds now ) {
  Counts & counts = counts_[Wirex::VlanIntfId::vlanId( status.intfId() )];
  if( counts.genId != status.genId() )
    counts = { .genId = status.genId() };
  auto const & [octets, packets, genId] = counts;
  using namespace Frames;
  Koi::U64 const groupOctets = octets[multicast] + octets[broadcast];
  IntfStatistics const statistics( octets[unicast] + groupOctets, packets[unicast],
                                   packets[multicast], packets[broadcast], 0, 0, 0, 0, 0, 0, 0, 0,
                                   now );
  auto const before = table_->counter( status.intfId() );
  IntfCounterRates const rates = before.genId() == genId
                                     ? intfCounterRates( before.statistics(), statistics )
                                     : IntfCounterRates();
  return VlanIntfCounterQuill( status.intfId(),
                               VlanIntfStatistics( octets[unicast], groupOctets, 0, 0 ), now,
                               statistics, rates, status.linkStatusChanges(), genId );
}

void IntfCounts::refresh( Koi::Seconds now ) {
  std::vector< IntfId > gone;
  for( auto const & i : table_->counter() )
    if( !listed_->intf().contains( i.key() ) )
      gone.push_back( i.key() );
  for( IntfId const & intfId : gone )
    table_->counterDel( intfId );
  for( auto const & i : listed_->intf() )
    if( auto const status = statuses_->intfStatus( i.key() ) )
      table_->counterIs( recordOf( *status, now ) );
}

}  // namespace VlanInterfaces
