// SharedMap.h: the same map as FlatMap's in a file that processes map, behind a lock that readers
// share: Boost.Interprocess. A batch is done under one lock.
#pragma once

#include <boost/interprocess/allocators/allocator.hpp>
#include <boost/interprocess/managed_mapped_file.hpp>
#include <boost/interprocess/sync/interprocess_sharable_mutex.hpp>
#include <boost/interprocess/sync/scoped_lock.hpp>
#include <boost/interprocess/sync/sharable_lock.hpp>
#include <boost/unordered/unordered_flat_map.hpp>

#include "Peer.h"

namespace Bench {

struct SharedMap {
  static constexpr char const * name = "shared+lock";
  static constexpr bool grows = true;
  static constexpr Beside beside = Beside::process;

  using File = boost::interprocess::managed_mapped_file;
  using Allocator =
      boost::interprocess::allocator< std::pair< Key const, Value >, File::segment_manager >;
  using Map =
      boost::unordered_flat_map< Key, Value, boost::hash< Key >, std::equal_to< Key >, Allocator >;
  using Mutex = boost::interprocess::interprocess_sharable_mutex;
  using ReadLock = boost::interprocess::sharable_lock< Mutex >;
  using WriteLock = boost::interprocess::scoped_lock< Mutex >;

  /// What lives in the file.
  struct Shared {
    explicit Shared( Allocator const & allocator ) : map( allocator ) {}

    Mutex mutex;
    Map map;
  };

  explicit SharedMap( Room const & room )
      : path( room.folder / ( "shared-map-" + std::to_string( numMade++ ) ) ),
        // Room for the old array beside the new one while it grows; a page that is not touched is
        // none.
        file( boost::interprocess::create_only, path.c_str(), 65536 + room.most * 300 ),
        shared( *file.construct< Shared >( "table" )( Allocator( file.get_segment_manager() ) ) ) {
    shared.map.reserve( room.reserve );
  }
  ~SharedMap() { std::filesystem::remove( path ); }

  double bytes() { return static_cast< double >( file.get_size() - file.get_free_memory() ); }

  struct Reader {
    explicit Reader( SharedMap & peer ) : shared( peer.shared ) {}

    bool lookup( Key key, Value & value ) {
      ReadLock const lock( shared.mutex );
      return found( key, value );
    }
    std::uint64_t lookupBatch( Key const * keys, unsigned n, Value * values ) {
      ReadLock const lock( shared.mutex );
      std::uint64_t all = 0;
      for( unsigned i = 0; i < n; ++i )
        all |= std::uint64_t{ found( keys[i], values[i] ) } << i;
      return all;
    }

   private:
    bool found( Key key, Value & value ) {
      auto const place = shared.map.find( key );
      if( place == shared.map.end() )
        return false;
      value = place->second;
      return true;
    }

    Shared & shared;
  };

  struct Writer {
    explicit Writer( SharedMap & peer ) : shared( peer.shared ) {}

    void insert( Record const & record ) {
      WriteLock const lock( shared.mutex );
      shared.map.emplace( record.key, record.value );
    }
    void overwrite( Record const & record ) {
      WriteLock const lock( shared.mutex );
      shared.map.find( record.key )->second = record.value;
    }
    void overwriteBatch( Record const * records, unsigned n ) {
      WriteLock const lock( shared.mutex );
      for( unsigned i = 0; i < n; ++i )
        shared.map.find( records[i].key )->second = records[i].value;
    }
    bool remove( Key key ) {
      WriteLock const lock( shared.mutex );
      return shared.map.erase( key ) == 1;
    }

    Shared & shared;
  };

  static inline unsigned numMade = 0;
  std::filesystem::path path;
  File file;
  Shared & shared;
};

}  // namespace Bench
