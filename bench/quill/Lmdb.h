// Lmdb.h: LMDB without waiting for a disk. A look-up alone renews its read transaction, so that it
// sees what is there now; a batch is looked up, or changed, in one transaction.
#pragma once

#include <cstring>

#include <lmdb.h>

#include "Peer.h"

namespace Bench {

struct Lmdb {
  static constexpr char const * name = "lmdb";
  static constexpr bool grows = true;
  static constexpr Beside beside = Beside::process;

  explicit Lmdb( Room const & room )
      : path( room.folder / ( "lmdb-" + std::to_string( numMade++ ) ) ),
        mapSize( ( std::size_t{ 1 } << 26 ) + room.most * 400 ) {
    open();
  }
  ~Lmdb() {
    mdb_env_close( environment );
    std::filesystem::remove( path );
    std::filesystem::remove( path.string() + "-lock" );
  }
  Lmdb( Lmdb const & ) = delete;

  /// An environment must not be used across fork(); the old one is left as it is.
  void afterFork() { open(); }

  double bytes() {
    MDB_envinfo info;
    MDB_stat stat;
    mdb_env_info( environment, &info );
    mdb_env_stat( environment, &stat );
    return static_cast< double >( ( info.me_last_pgno + 1 ) * stat.ms_psize );
  }

  static void need( int result, char const * what ) {
    if( result != 0 )
      throw Unavailable( std::string( "lmdb: " ) + what + ": " + mdb_strerror( result ) );
  }

  struct Reader {
    explicit Reader( Lmdb & peer ) : table( peer.table ) {
      need( mdb_txn_begin( peer.environment, nullptr, MDB_RDONLY, &transaction ), "a reader" );
      mdb_txn_reset( transaction );
    }
    ~Reader() { mdb_txn_abort( transaction ); }
    Reader( Reader const & ) = delete;

    bool lookup( Key key, Value & value ) {
      need( mdb_txn_renew( transaction ), "a look-up" );
      bool const was = found( key, value );
      mdb_txn_reset( transaction );
      return was;
    }
    std::uint64_t lookupBatch( Key const * keys, unsigned n, Value * values ) {
      need( mdb_txn_renew( transaction ), "a look-up" );
      std::uint64_t all = 0;
      for( unsigned i = 0; i < n; ++i )
        all |= std::uint64_t{ found( keys[i], values[i] ) } << i;
      mdb_txn_reset( transaction );
      return all;
    }

   private:
    bool found( Key key, Value & value ) {
      MDB_val place{ sizeof key, &key }, data;
      if( mdb_get( transaction, table, &place, &data ) != 0 )
        return false;
      std::memcpy( &value, data.mv_data, sizeof value );
      return true;
    }

    MDB_dbi table;
    MDB_txn * transaction;
  };

  struct Writer {
    explicit Writer( Lmdb & of ) : peer( of ) {}

    void insert( Record const & record ) { insertBatch( &record, 1 ); }
    void overwrite( Record const & record ) { insertBatch( &record, 1 ); }
    void overwriteBatch( Record const * records, unsigned n ) { insertBatch( records, n ); }
    void insertBatch( Record const * records, unsigned n ) {
      MDB_txn * const transaction = begun();
      for( unsigned i = 0; i < n; ++i ) {
        Key key = records[i].key;
        Value value = records[i].value;
        MDB_val place{ sizeof key, &key }, data{ sizeof value, &value };
        need( mdb_put( transaction, peer.table, &place, &data, 0 ), "a change" );
      }
      need( mdb_txn_commit( transaction ), "a commit" );
    }
    bool remove( Key key ) {
      MDB_txn * const transaction = begun();
      MDB_val place{ sizeof key, &key };
      bool const was = mdb_del( transaction, peer.table, &place, nullptr ) == 0;
      need( mdb_txn_commit( transaction ), "a commit" );
      return was;
    }

   private:
    MDB_txn * begun() {
      MDB_txn * transaction;
      need( mdb_txn_begin( peer.environment, nullptr, 0, &transaction ), "a writer" );
      return transaction;
    }

    Lmdb & peer;
  };

  void open() {
    need( mdb_env_create( &environment ), "an environment" );
    need( mdb_env_set_mapsize( environment, mapSize ), "its size" );
    need( mdb_env_open( environment, path.c_str(),
                        MDB_NOSUBDIR | MDB_NOSYNC | MDB_WRITEMAP | MDB_NOTLS, 0600 ),
          "its file" );
    MDB_txn * transaction;
    need( mdb_txn_begin( environment, nullptr, 0, &transaction ), "a writer" );
    need( mdb_dbi_open( transaction, nullptr, MDB_INTEGERKEY, &table ), "its table" );
    need( mdb_txn_commit( transaction ), "a commit" );
  }

  static inline unsigned numMade = 0;
  std::filesystem::path path;
  std::size_t mapSize;
  MDB_env * environment;
  MDB_dbi table;
};

}  // namespace Bench
