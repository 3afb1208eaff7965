// HostCounter.cpp: how hosts are counted: by the size of the database, whatever has happened to it.

#include <HostCounter.h>

namespace Learn {
namespace {

void countIs( FdbCounter const & counter, Koi::U32 now ) {
  HostCounts & counts = *counter.counts();
  Koi::U32 const before = counts.numHosts( counter.fid() );
  counts.numHostsIs( counter.fid(), now );
  counts.totalIs( counts.total() - before + now );
}

}  // namespace

void FdbCounter::handleFdbStatus() {
  if( fdbStatus() )
    countIs( *this, static_cast< Koi::U32 >( fdbStatus()->learnedHost().size() ) );
}
void FdbCounter::handleLearnedHost( Wirex::EthAddr const & ) { handleFdbStatus(); }

void FdbCounter::handleGone() {
  countIs( *this, 0 );
  counts()->numHostsDel( fid() );
}

void HostCounter::handleStatus() {
  fdbCounterDelAll();
  if( status() )
    for( auto const & fdb : status()->fdbStatus() )
      handleFdbStatus( fdb.key() );
}

void HostCounter::handleFdbStatus( Bridging::Fid const & fid ) {
  Koi::Ptr< Bridging::FdbStatus > const fdb = status()->fdbStatus( fid );
  Koi::Ptr< FdbCounter > const counter = fdbCounter( fid );
  if( counter && counter->fdbStatus() != fdb )
    fdbCounterDel( fid );
  if( fdb )
    fdbCounterIs( fid, fdb, counts() );
}

}  // namespace Learn
