// IntfCounter.cpp: rates, and what a set or a directory of counters is that nothing extends.

#include <Interface/IntfCounter.h>

namespace Interface {
namespace {

/// What was counted between two samples; 0 where the count went back.
double grown( Koi::U64 before, Koi::U64 now ) {
  return now > before ? static_cast< double >( now - before ) : 0;
}

double packets( Koi::U64 const ( &before )[3], Koi::U64 const ( &now )[3] ) {
  return grown( before[0], now[0] ) + grown( before[1], now[1] ) + grown( before[2], now[2] );
}

/// So many in that time, per second and rounded; what does not fit is the most that does.
Koi::U64 rate( double many, Koi::Seconds time ) {
  double const rounded = many / time + 0.5;
  return rounded < 0x1p64 ? static_cast< Koi::U64 >( rounded ) : ~Koi::U64{ 0 };
}

}  // namespace

IntfCounterRates intfCounterRates( IntfStatistics const & before, IntfStatistics const & now ) {
  Koi::Seconds const time = now.statsUpdateTime() - before.statsUpdateTime();
  if( !( time > 0 ) )  // a NaN among them
    return IntfCounterRates( 0, 0, 0, 0, now.statsUpdateTime() );
  double const inPkts =
      packets( { before.inUcastPkts(), before.inMulticastPkts(), before.inBroadcastPkts() },
               { now.inUcastPkts(), now.inMulticastPkts(), now.inBroadcastPkts() } );
  double const outPkts =
      packets( { before.outUcastPkts(), before.outMulticastPkts(), before.outBroadcastPkts() },
               { now.outUcastPkts(), now.outMulticastPkts(), now.outBroadcastPkts() } );
  return IntfCounterRates( rate( 8 * grown( before.inOctets(), now.inOctets() ), time ),
                           rate( inPkts, time ),
                           rate( 8 * grown( before.outOctets(), now.outOctets() ), time ),
                           rate( outPkts, time ), now.statsUpdateTime() );
}

bool IntfCounter::exists() const { return true; }

Koi::Ptr< IntfCounter > IntfCounterDirBase::doGetIntfCounter( Koi::Name const & ) const {
  return nullptr;
}

Koi::Ptr< IntfCounterDirBase > IntfCounterDirDirBase::doGetIntfCounterDir(
    Wirex::IntfId const & ) const {
  return nullptr;
}

}  // namespace Interface
