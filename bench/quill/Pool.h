// Pool.h: nodes for tables that a reader walks without a lock: an entry is never changed, it is
// replaced by another node, and the old one is used again only when no reader can hold it any more.
#pragma once

#include <memory>
#include <vector>

namespace Bench {

template< typename Node >
class Pool {
 public:
  /// A node that nobody can hold. waitForReaders() is called now and then, and must return only
  /// when none of them holds a node that was retired before.
  template< typename Wait >
  Node * taken( Wait && waitForReaders ) {
    if( spare_.empty() && retired_.size() >= numHeldBack ) {
      waitForReaders();
      spare_.swap( retired_ );
    } else if( spare_.empty() ) {
      chunks_.push_back( std::make_unique< Node[] >( chunkSize ) );
      for( std::size_t i = chunkSize; i-- > 0; )
        spare_.push_back( &chunks_.back()[i] );
    }
    Node * const node = spare_.back();
    spare_.pop_back();
    return node;
  }

  /// The table refers to it no longer.
  void retire( Node * node ) { retired_.push_back( node ); }

  double bytes() const {
    return static_cast< double >( chunks_.size() * chunkSize * sizeof( Node ) );
  }

 private:
  // Waiting costs a reader's whole round, so it is done for many nodes at once.
  static constexpr std::size_t chunkSize = 256, numHeldBack = 4096;

  std::vector< std::unique_ptr< Node[] > > chunks_;
  std::vector< Node * > spare_, retired_;
};

}  // namespace Bench
