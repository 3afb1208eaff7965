// RteHash.h: rte_hash of DPDK with the flag for readers without a lock, in one process, without
// huge pages. Its capacity is fixed. The table points to the records.
#pragma once

#include <cstdlib>

#include <sched.h>

#include <rte_eal.h>
#include <rte_errno.h>
#include <rte_hash.h>
#include <rte_hash_crc.h>
#include <rte_malloc.h>

#include "Peer.h"
#include "Pool.h"
#include "Quiescence.h"

namespace Bench {

struct RteHash {
  static constexpr char const * name = "rte_hash";
  static constexpr bool grows = false;
  static constexpr Beside beside = Beside::thread;

  explicit RteHash( Room const & room ) {
    startEal( room );
    double const before = bytesOfEal();
    std::string const unique = "table" + std::to_string( numMade++ );
    rte_hash_parameters parameters{};
    parameters.name = unique.c_str();
    // A quarter more than needed, for it refuses keys before it is quite full.
    parameters.entries = static_cast< std::uint32_t >( room.reserve + room.reserve / 4 );
    parameters.key_len = sizeof( Key );
    parameters.hash_func = rte_hash_crc;
    parameters.socket_id = SOCKET_ID_ANY;
    parameters.extra_flag = RTE_HASH_EXTRA_FLAGS_RW_CONCURRENCY_LF;
    table = rte_hash_create( &parameters );
    if( !table )
      throw Unavailable( "rte_hash: " + std::string( rte_strerror( rte_errno ) ) );
    tableBytes = bytesOfEal() - before;
  }
  ~RteHash() { rte_hash_free( table ); }
  RteHash( RteHash const & ) = delete;

  double bytes() { return tableBytes + pool.bytes(); }

  struct Reader {
    explicit Reader( RteHash & of ) : peer( of ) { peer.quiescence.begin(); }
    ~Reader() { peer.quiescence.end(); }

    bool lookup( Key key, Value & value ) {
      void * data;
      if( rte_hash_lookup_data( peer.table, &key, &data ) < 0 )
        return false;
      value = static_cast< Record const * >( data )->value;
      return true;
    }
    std::uint64_t lookupBatch( Key const * keys, unsigned n, Value * values ) {
      void const * places[lookupBatchSize];
      void * data[lookupBatchSize];
      for( unsigned i = 0; i < n; ++i )
        places[i] = keys + i;
      std::uint64_t found = 0;
      rte_hash_lookup_bulk_data( peer.table, places, n, &found, data );
      for( unsigned i = 0; i < n; ++i )
        if( found >> i & 1 )
          values[i] = static_cast< Record const * >( data[i] )->value;
      return found;
    }
    void quiet() { peer.quiescence.quiet(); }

    RteHash & peer;
  };

  struct Writer {
    explicit Writer( RteHash & of ) : peer( of ) {}

    void insert( Record const & record ) {
      put( record, rte_hash_hash( peer.table, &record.key ) );
    }
    void overwrite( Record const & record ) {
      hash_sig_t const hash = rte_hash_hash( peer.table, &record.key );
      void * old;
      rte_hash_lookup_with_hash_data( peer.table, &record.key, hash, &old );
      put( record, hash );
      peer.pool.retire( static_cast< Record * >( old ) );
    }
    bool remove( Key key ) {
      hash_sig_t const hash = rte_hash_hash( peer.table, &key );
      void * old;
      if( rte_hash_lookup_with_hash_data( peer.table, &key, hash, &old ) < 0 )
        return false;
      // No reader is there while entries are removed here, so the place is free at once.
      rte_hash_free_key_with_position( peer.table,
                                       rte_hash_del_key_with_hash( peer.table, &key, hash ) );
      peer.pool.retire( static_cast< Record * >( old ) );
      return true;
    }

   private:
    void put( Record const & record, hash_sig_t hash ) {
      Record * const node = peer.pool.taken( [this] { peer.quiescence.wait(); } );
      *node = record;
      if( rte_hash_add_key_with_hash_data( peer.table, &record.key, hash, node ) < 0 )
        throw std::runtime_error( "rte_hash: it refuses a key" );
    }

    RteHash & peer;
  };

  /// DPDK's environment, once in a process, with memory for the tables of this room.
  static void startEal( Room const & room ) {
    static int const started = [&room] {
      // Whatever it wants to put into a folder goes the way of ours.
      setenv( "RUNTIME_DIRECTORY", room.folder.c_str(), 1 );
      cpu_set_t allowed;
      sched_getaffinity( 0, sizeof allowed, &allowed );
      unsigned core = 0;
      while( !CPU_ISSET( core, &allowed ) )
        ++core;
      std::string program = "quillBench", noHuge = "--no-huge", noPci = "--no-pci",
                  noShared = "--no-shconf", noTelemetry = "--no-telemetry", quiet = "--log-level=1",
                  cores = "-l" + std::to_string( core ),
                  memory = "-m" + std::to_string( 64 + room.most / 8192 );
      char * arguments[] = { program.data(),     noHuge.data(), noPci.data(), noShared.data(),
                             noTelemetry.data(), quiet.data(),  cores.data(), memory.data() };
      int const result = rte_eal_init( std::size( arguments ), arguments );
      // It has tied this thread to the one core; the threads of other peers would inherit that.
      sched_setaffinity( 0, sizeof allowed, &allowed );
      return result;
    }();
    if( started < 0 )
      throw Unavailable( "rte_hash: DPDK's environment does not start" );
  }
  static double bytesOfEal() {
    rte_malloc_socket_stats stats{};
    rte_malloc_get_socket_stats( 0, &stats );
    return static_cast< double >( stats.heap_allocsz_bytes );
  }

  static inline unsigned numMade = 0;
  rte_hash * table;
  double tableBytes;
  Pool< Record > pool;
  Quiescence quiescence;
};

}  // namespace Bench
