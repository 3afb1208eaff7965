// Lfht.h: cds_lfht of liburcu, readers and writers without a lock, in one process, with the flavour
// of RCU that costs readers least: they say now and then that they are quiet.
#pragma once

#include <bit>

#include <urcu/urcu-qsbr.h>

#include <urcu/rculfhash.h>

#include "Peer.h"
#include "Pool.h"

namespace Bench {

struct Lfht {
  static constexpr char const * name = "lfht";
  static constexpr bool grows = true;
  static constexpr Beside beside = Beside::thread;

  struct Node {
    cds_lfht_node link;  // first, so that a node and its link have one address
    Record record;
  };
  static Node * nodeOf( cds_lfht_node * link ) { return reinterpret_cast< Node * >( link ); }
  static int matches( cds_lfht_node * link, void const * key ) {
    return nodeOf( link )->record.key == *static_cast< Key const * >( key );
  }

  explicit Lfht( Room const & room )
      : numBuckets( std::bit_ceil( room.reserve + 1 ) ),
        table( cds_lfht_new_flavor( numBuckets, 1, 0, 0, &urcu_qsbr_flavor, nullptr ) ) {
    if( !table )
      throw Unavailable( "lfht: no memory" );
  }
  ~Lfht() {
    urcu_qsbr_register_thread();
    cds_lfht_iter at;
    cds_lfht_node * link;
    cds_lfht_for_each( table, &at, link ) cds_lfht_del( table, link );
    urcu_qsbr_unregister_thread();
    cds_lfht_destroy( table, nullptr );
  }
  Lfht( Lfht const & ) = delete;

  struct Reader {
    explicit Reader( Lfht & peer ) : table( peer.table ) { urcu_qsbr_register_thread(); }
    ~Reader() { urcu_qsbr_unregister_thread(); }

    bool lookup( Key key, Value & value ) {
      cds_lfht_iter at;
      cds_lfht_lookup( table, mixed( key ), matches, &key, &at );
      cds_lfht_node * const link = cds_lfht_iter_get_node( &at );
      if( !link )
        return false;
      value = nodeOf( link )->record.value;
      return true;
    }
    void quiet() { urcu_qsbr_quiescent_state(); }

    cds_lfht * table;
  };

  struct Writer {
    explicit Writer( Lfht & of ) : peer( of ) { urcu_qsbr_register_thread(); }
    ~Writer() { urcu_qsbr_unregister_thread(); }

    void insert( Record const & record ) {
      cds_lfht_add( peer.table, mixed( record.key ), &made( record )->link );
      if( ++peer.numEntries > peer.numBuckets )
        cds_lfht_resize( peer.table, peer.numBuckets *= 2 );
    }
    void overwrite( Record const & record ) {
      peer.pool.retire( nodeOf( cds_lfht_add_replace( peer.table, mixed( record.key ), matches,
                                                      &record.key, &made( record )->link ) ) );
    }
    bool remove( Key key ) {
      cds_lfht_iter at;
      cds_lfht_lookup( peer.table, mixed( key ), matches, &key, &at );
      cds_lfht_node * const link = cds_lfht_iter_get_node( &at );
      if( !link || cds_lfht_del( peer.table, link ) != 0 )
        return false;
      peer.pool.retire( nodeOf( link ) );
      --peer.numEntries;
      return true;
    }

   private:
    Node * made( Record const & record ) {
      Node * const node = peer.pool.taken( [] { urcu_qsbr_synchronize_rcu(); } );
      cds_lfht_node_init( &node->link );
      node->record = record;
      return node;
    }

    Lfht & peer;
  };

  // The writer makes the table larger. CDS_LFHT_AUTO_RESIZE leaves that to a thread, and with
  // liburcu 0.13 a table that is filled at full speed was seen to stay small for good.
  unsigned long numBuckets, numEntries = 0;
  cds_lfht * table;
  Pool< Node > pool;
};

}  // namespace Bench
