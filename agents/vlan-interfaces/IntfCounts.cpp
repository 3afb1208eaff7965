#include "IntfCounts.h"

#include <mem/Rova.h>

#include <vector>

#include "VlanOf.h"

namespace VlanInterfaces {

using namespace Interface;
using Wirex::IntfId;

namespace {

std::vector< IntfId > keysOf( AllVlanIntfCounterQuill const & table ) {
  std::vector< IntfId > keys;
  for( auto const & i : table.counter() )
    keys.push_back( i.key() );
  return keys;
}

}  // namespace

IntfCounts::IntfCounts( Koi::Ptr< AllVlanIntfCounterQuill > table,
                        Koi::Ptr< VlanIntfCounterWriterStatus const > listed,
                        Koi::Ptr< VlanIntfStatusDir const > statuses )
    : table_( std::move( table ) ),
      listed_( std::move( listed ) ),
      statuses_( std::move( statuses ) ) {
  for( IntfId const & intfId : keysOf( *table_ ) )
    if( !listed_->intf().contains( intfId ) )
      table_->counterDel( intfId );
  notifierIs( listed_ );
}

VlanIntfCounterQuill IntfCounts::recordOf( VlanIntfStatus const & status, Koi::Seconds now ) const {
  auto const & [octets, packets] = counts_[vlanOf( status.intfId() )];
  using namespace Frames;
  Koi::U64 const groupOctets = octets[multicast] + octets[broadcast];
  IntfStatistics const statistics( octets[unicast] + groupOctets, packets[unicast],
                                   packets[multicast], packets[broadcast], 0, 0, 0, 0, 0, 0, 0, 0,
                                   now );
  auto const before = table_->counter( status.intfId() );
  IntfCounterRates const rates = before.genId() == status.genId()
                                     ? intfCounterRates( before.statistics(), statistics )
                                     : IntfCounterRates();
  return VlanIntfCounterQuill( status.intfId(),
                               VlanIntfStatistics( octets[unicast], groupOctets, 0, 0 ), now,
                               statistics, rates, status.linkStatusChanges(), status.genId() );
}

void IntfCounts::onIntf( IntfId const & intfId ) {
  if( vlanOf( intfId ) == 0 )  // whoever may change the tree may list anything
    return;
  counts_[vlanOf( intfId )] = {};
  try {
    auto const status = statuses_->intfStatus( intfId );
    if( status && listed_->intf().contains( intfId ) )
      table_->counterIs( recordOf( *status, 0 ) );
    else
      table_->counterDel( intfId );
  } catch( Rova::MemoryResourceException const & ) {  // no room now: refresh() will say so
  }
}

void IntfCounts::refresh( Koi::Seconds now ) {
  for( auto const & i : listed_->intf() )
    if( auto const status = vlanOf( i.key() ) != 0 ? statuses_->intfStatus( i.key() ) : nullptr )
      table_->counterIs( recordOf( *status, now ) );
}

}  // namespace VlanInterfaces
