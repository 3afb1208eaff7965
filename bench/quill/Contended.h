// Contended.h: the workloads, compiled for one peer.
#pragma once

#include <array>
#include <bit>
#include <optional>

#include "Memory.h"
#include "Timing.h"
#include "WriterBeside.h"

namespace Bench {

template< Peer P >
class Contended final : public Contender {
 public:
  Contended( Room const & room, Keys const & keys ) : room_( room ), keys_( keys ) {
    double const before = bytesOfProcess();
    peer_.emplace( room );
    fill( *peer_, keys.present );
    if constexpr( CountsBytes< P > )
      bytes_ = peer_->bytes();
    else
      bytes_ = bytesOfProcess() - before;
  }

  Figures measured( Workload workload, Pass const & pass ) override {
    switch( workload ) {
      case Workload::hit:
        return { { "hit", lookedUp( pass, keys_.probes ) } };
      case Workload::hitBatch:
        return lookedUpInBatches( "hit 64", pass, keys_.probes );
      case Workload::miss:
        return { { "miss", lookedUp( pass, keys_.absent ) } };
      case Workload::missBatch:
        return lookedUpInBatches( "miss 64", pass, keys_.absent );
      case Workload::beside:
        return lookedUpBeside( pass );
      case Workload::besideLatency:
        return latenciesBeside( pass );
      case Workload::overwrite:
        return { { "overwrite", overwritten( pass ) } };
      case Workload::overwriteBatch:
        return overwrittenInBatches( pass );
      case Workload::churn:
        return { { "churn", churned( pass ) } };
      case Workload::grow:
        return grown( pass );
      case Workload::growLatency:
        return latenciesOfGrowing();
      case Workload::memory:
        return { { "B/entry", bytes_ / static_cast< double >( keys_.present.size() ) } };
    }
    return {};
  }

  std::string fault() override {
    std::string wrong = faultOf( keys_.probes, true );
    if( wrong.empty() )
      wrong = faultOf( keys_.absent, false );
    if constexpr( P::beside != Beside::nowhere )
      if( wrong.empty() ) {
        WriterBeside< P > writer( *peer_, keys_ );
        wrong = faultOf( keys_.probes, true );
        if( wrong.empty() && writer.numWritten() == 0 )
          wrong = "the writer beside did not write";
        if( !wrong.empty() )
          wrong += ", beside a writer";
      }
    return wrong;
  }

 private:
  using Reader = typename P::Reader;
  using Writer = typename P::Writer;

  static void fill( P & peer, std::vector< Key > const & keys ) {
    Writer writer( peer );
    if constexpr( InsertsBatches< P > ) {
      std::vector< Record > records;
      for( std::size_t at = 0; at < keys.size(); at += records.size() ) {
        records.clear();
        for( std::size_t i = at; i < std::min( at + stride, keys.size() ); ++i )
          records.push_back( recordOf( keys[i], 0 ) );
        writer.insertBatch( records.data(), static_cast< unsigned >( records.size() ) );
      }
    } else {
      for( Key const key : keys )
        writer.insert( recordOf( key, 0 ) );
    }
  }

  static void becomeQuiet( Reader & reader ) {
    if constexpr( BecomesQuiet< P > )
      reader.quiet();
  }

  /// Looks up a stride of keys; the peer's reader becomes quiet as often as it asks for.
  static void lookUpStride( Reader & reader, Key const * keys ) {
    for( std::size_t at = 0; at < stride; at += lookupBatchSize ) {
      for( std::size_t i = at; i < at + lookupBatchSize; ++i ) {
        Value value{};
        reader.lookup( keys[i], value );
        keep( value );
      }
      becomeQuiet( reader );
    }
  }

  double lookedUp( Pass const & pass, std::vector< Key > const & keys ) {
    Reader reader( *peer_ );
    return nanosecondsEach( pass, keys,
                            [&]( Key const * first ) { lookUpStride( reader, first ); } );
  }

  Figures lookedUpInBatches( [[maybe_unused]] char const * figure,
                             [[maybe_unused]] Pass const & pass,
                             [[maybe_unused]] std::vector< Key > const & keys ) {
    if constexpr( LooksUpBatches< P > ) {
      Reader reader( *peer_ );
      return { { figure, nanosecondsEach( pass, keys, [&]( Key const * first ) {
                   std::array< Value, lookupBatchSize > values;
                   for( std::size_t at = 0; at < stride; at += lookupBatchSize ) {
                     keep( reader.lookupBatch( first + at, lookupBatchSize, values.data() ) );
                     keep( values );
                     becomeQuiet( reader );
                   }
                 } ) } };
    }
    return {};
  }

  Figures lookedUpBeside( [[maybe_unused]] Pass const & pass ) {
    if constexpr( P::beside != Beside::nowhere ) {
      WriterBeside< P > writer( *peer_, keys_ );
      auto const start = Clock::now();
      std::uint64_t const before = writer.numWritten();
      double const each = lookedUp( pass, keys_.probes );
      auto const written = static_cast< double >( writer.numWritten() - before );
      double const spent = nanoseconds( Clock::now() - start );
      Figures figures{ { "beside", each } };
      if( written > 0 )
        figures.emplace_back( "writer", spent / written );
      return figures;
    }
    return {};
  }

  Figures latenciesBeside( [[maybe_unused]] Pass const & pass ) {
    if constexpr( P::beside != Beside::nowhere ) {
      WriterBeside< P > writer( *peer_, keys_ );
      Latencies latencies( keys_.probes.size() );
      Reader reader( *peer_ );
      std::size_t at = pass.start % keys_.probes.size();
      auto const start = Clock::now();
      while( !latencies.full() && nanoseconds( Clock::now() - start ) < pass.seconds * 1e9 ) {
        latencies.start();
        for( unsigned i = 0; i < lookupBatchSize; ++i ) {
          Value value{};
          reader.lookup( keys_.probes[at + i], value );
          keep( value );
          latencies.next();
        }
        becomeQuiet( reader );
        at = ( at + lookupBatchSize ) % keys_.probes.size();
      }
      return { { "beside p50", latencies.at( 0.5 ) },
               { "beside p99", latencies.at( 0.99 ) },
               { "beside max", latencies.at( 1 ) } };
    }
    return {};
  }

  double overwritten( Pass const & pass ) {
    Writer writer( *peer_ );
    ++generation_;
    return nanosecondsEach( pass, keys_.probes, [&]( Key const * first ) {
      for( std::size_t i = 0; i < stride; ++i )
        writer.overwrite( recordOf( first[i], generation_ ) );
    } );
  }

  Figures overwrittenInBatches( [[maybe_unused]] Pass const & pass ) {
    if constexpr( OverwritesBatches< P > ) {
      Writer writer( *peer_ );
      ++generation_;
      return { { "overwr 32", nanosecondsEach( pass, keys_.probes, [&]( Key const * first ) {
                   std::array< Record, changeBatchSize > records;
                   for( std::size_t at = 0; at < stride; at += changeBatchSize ) {
                     for( std::size_t i = 0; i < changeBatchSize; ++i )
                       records[i] = recordOf( first[at + i], generation_ );
                     writer.overwriteBatch( records.data(), changeBatchSize );
                   }
                 } ) } };
    }
    return {};
  }

  double churned( Pass const & pass ) {
    Writer writer( *peer_ );
    ++generation_;
    return nanosecondsEach( pass, keys_.probes, [&]( Key const * first ) {
      for( std::size_t i = 0; i < stride; ++i ) {
        keep( writer.remove( first[i] ) );
        writer.insert( recordOf( first[i], generation_ ) );
      }
    } );
  }

  Room empty() const { return { room_.folder, 0, room_.most }; }

  Figures grown( [[maybe_unused]] Pass const & pass ) {
    if constexpr( P::grows ) {
      double spent = 0, numInserted = 0;
      do {
        P peer( empty() );
        Writer writer( peer );
        auto const start = Clock::now();
        for( Key const key : keys_.present )
          writer.insert( recordOf( key, 0 ) );
        spent += nanoseconds( Clock::now() - start );
        numInserted += static_cast< double >( keys_.present.size() );
      } while( spent < pass.seconds * 1e9 );
      return { { "grow", spent / numInserted } };
    }
    return {};
  }

  Figures latenciesOfGrowing() {
    if constexpr( P::grows ) {
      P peer( empty() );
      Writer writer( peer );
      Latencies latencies( keys_.present.size() );
      latencies.start();
      for( Key const key : keys_.present ) {
        writer.insert( recordOf( key, 0 ) );
        latencies.next();
      }
      return { { "grow p50", latencies.at( 0.5 ) },
               { "grow p99", latencies.at( 0.99 ) },
               { "grow max", latencies.at( 1 ) } };
    }
    return {};
  }

  std::string faultOf( std::vector< Key > const & keys, bool expected ) {
    Reader reader( *peer_ );
    for( std::size_t at = 0; at < 4 * stride; at += lookupBatchSize ) {
      std::array< Value, lookupBatchSize > values{};
      auto const judged = [&]( std::size_t i, bool found ) -> char const * {
        if( found != expected )
          return expected ? "an entry is not found" : "an entry is found that is not there";
        return found && !proves( keys[at + i], values[i] ) ? "an entry is torn" : nullptr;
      };
      if constexpr( LooksUpBatches< P > ) {
        std::uint64_t const found = reader.lookupBatch( &keys[at], lookupBatchSize, values.data() );
        for( std::size_t i = 0; i < lookupBatchSize; ++i )
          if( char const * wrong = judged( i, found >> i & 1 ) )
            return std::string( wrong ) + ", in a batch";
        becomeQuiet( reader );
      }
      values = {};
      // A quarter of them one by one: there are peers that take their time.
      for( std::size_t i = 0; i < lookupBatchSize / 4; ++i )
        if( char const * wrong = judged( i, reader.lookup( keys[at + i], values[i] ) ) )
          return wrong;
      becomeQuiet( reader );
    }
    return {};
  }

  Room const room_;
  Keys const & keys_;
  std::optional< P > peer_;
  double bytes_;
  std::uint32_t generation_ = 0;
};

// Ends each peer's source, which CMake writes.
#define LUMO_BENCH_PEER( peer )                                                                \
  namespace Bench {                                                                            \
  extern PeerKind const kindOf##peer;                                                          \
  PeerKind const kindOf##peer{                                                                 \
      peer::name, []( Room const & room, Keys const & keys ) -> std::unique_ptr< Contender > { \
        return std::make_unique< Contended< peer > >( room, keys );                            \
      } };                                                                                     \
  }

}  // namespace Bench
