// EthIntf.cpp: where an interface finds its counters unless its kind knows better.

#include <Interface/EthIntf.h>
#include <interface/IntfCounterSearch.h>

namespace Interface {

Koi::Ptr< IntfCounter > EthIntfStatus::counter() const { return counterCommon( *this ); }

}  // namespace Interface
