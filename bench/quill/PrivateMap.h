// PrivateMap.h: a peer that is a hash map of one process, which no other can read: what a look-up
// costs when nothing is shared.
#pragma once

#include "Peer.h"

namespace Bench {

template< typename Map >
struct PrivateMap {
  static constexpr bool grows = true;
  static constexpr Beside beside = Beside::nowhere;

  explicit PrivateMap( Room const & room ) { map.reserve( room.reserve ); }

  struct Reader {
    explicit Reader( PrivateMap & peer ) : map( peer.map ) {}

    bool lookup( Key key, Value & value ) {
      auto const found = map.find( key );
      if( found == map.end() )
        return false;
      value = found->second;
      return true;
    }

    Map const & map;
  };

  struct Writer {
    explicit Writer( PrivateMap & peer ) : map( peer.map ) {}

    void insert( Record const & record ) { map.emplace( record.key, record.value ); }
    void overwrite( Record const & record ) { map.find( record.key )->second = record.value; }
    bool remove( Key key ) { return map.erase( key ) == 1; }

    Map & map;
  };

  Map map;
};

}  // namespace Bench
