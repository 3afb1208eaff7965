// Quill.h: a table of ours, in files that any process could read.
#pragma once

#include <cstring>
#include <optional>

#include <quill/QuillReader.h>
#include <quill/QuillWriter.h>

#include "Peer.h"

template<>
struct Quill::Record< Bench::Record > {
  using Value = Bench::Record;
  using Key = Bench::Key;
  static constexpr char valueType[] = "Bench::Record";
  static constexpr Koi::U32 keySize = sizeof( Bench::Key ), valueSize = sizeof( Bench::Record );

  static void putKey( Key const & key, Koi::U32 * words ) { std::memcpy( words, &key, keySize ); }
  static void put( Value const & v, Koi::U32 * words ) { std::memcpy( words, &v, valueSize ); }
  static Key key( Koi::U32 const * words ) {
    Key k;
    std::memcpy( &k, words, keySize );
    return k;
  }
  static Value value( Koi::U32 const * words ) {
    Value v;
    std::memcpy( &v, words, valueSize );
    return v;
  }
  /// As a host's: of its address, begun with the seed, exclusive-or its filtering database.
  static Koi::U32 hash( Koi::U32 const * words, Koi::U32 seed ) {
    Koi::HashStream stream( seed );
    stream.block( words[0] >> 16 | words[1] << 16 );
    stream.narrow( words[1] >> 16, 2 );
    return stream.finish() ^ ( words[0] & 0xffff );
  }
};

namespace Bench {

struct Quill {
  static constexpr char const * name = "quill";
  static constexpr bool grows = true;
  static constexpr Beside beside = Beside::thread;

  using Table = ::Quill::QuillWriter< Record >;

  explicit Quill( Room const & room )
      : root( room.folder.string() ), writer( root, tableName( numMade++ ), parameters( room ) ) {}
  ~Quill() { writer.cleanup(); }
  Quill( Quill const & ) = delete;
  Quill & operator=( Quill const & ) = delete;

  double bytes() {
    auto const & engine = writer.engine();
    return static_cast< double >( engine.slots().view().file().size() +
                                  engine.buckets().view().file().size() +
                                  engine.queue().fileBytes() + engine.queue().bytes() );
  }

  struct Reader {
    explicit Reader( Quill & of ) : table( of.root, tableName( of.number ) ) {}

    bool lookup( Key key, Value & value ) {
      Engine::Value words;
      if( !table.engine().lookup( keyWords( key ), words ) )
        return false;
      value = ::Quill::Record< Record >::value( words.word ).value;
      return true;
    }
    std::uint64_t lookupBatch( Key const * keys, unsigned n, Value * values ) {
      ::Quill::KeyWords< ::Quill::Record< Record > > words[64];
      for( unsigned i = 0; i < n; ++i )
        words[i] = keyWords( keys[i] );
      std::uint64_t found = 0;
      table.engine().lookup( std::span( words, n ), [&]( std::size_t i, Engine::Value const * v ) {
        if( v ) {
          found |= std::uint64_t{ 1 } << i;
          values[i] = ::Quill::Record< Record >::value( v->word ).value;
        }
      } );
      return found;
    }

    using Engine = ::Quill::QuillReader< Record >::Engine;
    static ::Quill::KeyWords< ::Quill::Record< Record > > keyWords( Key key ) {
      ::Quill::KeyWords< ::Quill::Record< Record > > words;
      ::Quill::Record< Record >::putKey( key, words.word );
      return words;
    }
    ::Quill::QuillReader< Record > table;
  };

  struct Writer {
    explicit Writer( Quill & of ) : peer( of ) {}
    void insert( Record const & record ) { peer.writer.write( record ); }
    void overwrite( Record const & record ) { peer.writer.write( record ); }
    bool remove( Key key ) { return peer.writer.remove( key ).has_value(); }
    void insertBatch( Record const * records, unsigned n ) {
      peer.writer.write( std::span( records, n ) );
    }
    void overwriteBatch( Record const * records, unsigned n ) {
      peer.writer.write( std::span( records, n ) );
    }
    Quill & peer;
  };

 private:
  static std::string tableName( unsigned of ) { return "table" + std::to_string( of ); }
  static ::Quill::TableParameters parameters( Room const & room ) {
    ::Quill::TableParameters p;
    p.classType = "Bench::Table";
    p.maxSlots = static_cast< Koi::U32 >( std::max< std::size_t >( room.most, 8 ) );
    p.initialSlots = static_cast< Koi::U32 >( std::max< std::size_t >( room.reserve, 8 ) );
    return p;
  }

  static inline unsigned numMade = 0;
  unsigned const number = numMade;
  Mem::RootPath const root;
  Table writer;
};

}  // namespace Bench
