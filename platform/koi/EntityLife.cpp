#include <koi/EntityLife.h>

namespace Koi {

void EntityLife::callReferences() {
  while( !references_.isAlone() ) {
    auto & reference = static_cast< WeakReference & >( *references_.after );
    reference.leaveRing();
    try {
      reference.targetIsGone();
    } catch( ... ) {  // deliberate: whoever dropped the last reference cannot do anything about it
    }
  }
}

constinit thread_local Departure * Departure::outermost_ = nullptr;

Departure::Departure( Ptr< EntityLife > const & life ) {
  if( !outermost_ )
    outermost_ = this;
  if( !life || life->references_.isAlone() )
    return;
  auto & last = outermost_->last_;
  ( last ? last->next_ : outermost_->first_ ) = life;
  last = life;
}

Departure::~Departure() {
  if( outermost_ != this )
    return;
  outermost_ = nullptr;
  while( first_ ) {
    Ptr< EntityLife > const life = first_;
    first_ = std::exchange( life->next_, nullptr );
    life->callReferences();
  }
}

}  // namespace Koi
