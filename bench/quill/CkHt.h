// CkHt.h: ck_ht of Concurrency Kit, one writer and many readers without a lock, in one process.
// Keys are in the table itself, which points to the records.
#pragma once

#include <cstdlib>

extern "C" {
#include <ck_ht.h>
}

#include "Peer.h"
#include "Pool.h"
#include "Quiescence.h"

namespace Bench {

struct CkHt {
  static constexpr char const * name = "ck_ht";
  static constexpr bool grows = true;
  static constexpr Beside beside = Beside::thread;

  explicit CkHt( Room const & room ) {
    // It doubles when it is half full.
    if( !ck_ht_init( &table, CK_HT_MODE_DIRECT, nullptr, &heap, 2 * room.reserve + 64, 1 ) )
      throw Unavailable( "ck_ht: no memory" );
  }
  ~CkHt() { ck_ht_destroy( &table ); }
  CkHt( CkHt const & ) = delete;

  struct Reader {
    explicit Reader( CkHt & of ) : peer( of ) { peer.quiescence.begin(); }
    ~Reader() { peer.quiescence.end(); }

    bool lookup( Key key, Value & value ) {
      ck_ht_hash_t hash;
      ck_ht_entry_t entry;
      ck_ht_hash_direct( &hash, &peer.table, key );
      ck_ht_entry_key_set_direct( &entry, key );
      if( !ck_ht_get_spmc( &peer.table, hash, &entry ) )
        return false;
      value = reinterpret_cast< Record const * >( ck_ht_entry_value_direct( &entry ) )->value;
      return true;
    }
    void quiet() { peer.quiescence.quiet(); }

    CkHt & peer;
  };

  struct Writer {
    explicit Writer( CkHt & of ) : peer( of ) {}

    void insert( Record const & record ) { put( record ); }
    void overwrite( Record const & record ) { peer.pool.retire( put( record ) ); }
    bool remove( Key key ) {
      ck_ht_hash_t hash;
      ck_ht_entry_t entry;
      ck_ht_hash_direct( &hash, &peer.table, key );
      ck_ht_entry_key_set_direct( &entry, key );
      if( !ck_ht_remove_spmc( &peer.table, hash, &entry ) )
        return false;
      peer.pool.retire( reinterpret_cast< Record * >( ck_ht_entry_value_direct( &entry ) ) );
      return true;
    }

   private:
    /// Returns the record that was there.
    Record * put( Record const & record ) {
      Record * const node = peer.pool.taken( [this] { peer.quiescence.wait(); } );
      *node = record;
      ck_ht_hash_t hash;
      ck_ht_entry_t entry;
      ck_ht_hash_direct( &hash, &peer.table, record.key );
      ck_ht_entry_set_direct( &entry, hash, record.key,
                              reinterpret_cast< std::uintptr_t >( node ) );
      if( !ck_ht_set_spmc( &peer.table, hash, &entry ) )
        throw Unavailable( "ck_ht: no memory" );
      return ck_ht_entry_empty( &entry )
                 ? nullptr
                 : reinterpret_cast< Record * >( ck_ht_entry_value_direct( &entry ) );
    }

    CkHt & peer;
  };

  // A table that grew is freed at once: none grows here while it is read.
  static inline ck_malloc heap{
      .malloc = []( std::size_t size ) { return std::malloc( size ); },
      .realloc = []( void * block, std::size_t, std::size_t size,
                     bool ) { return std::realloc( block, size ); },
      .free = []( void * block, std::size_t, bool ) { std::free( block ); },
  };
  ck_ht_t table;
  Pool< Record > pool;
  Quiescence quiescence;
};

}  // namespace Bench
