// Peer.h: what a peer of quillBench is. A peer is a class Bench::Name in Name.h and a line in
// CMakeLists.txt; the loops of Contended.h are compiled for it, so nothing is virtual inside them.
//
//   struct Name {
//     static constexpr char const * name = "what the tables of figures call it";
//     static constexpr bool grows = true;             // may hold more than was reserved
//     static constexpr Beside beside = Beside::thread;
//
//     explicit Name( Room const & room );             // empty; throws Unavailable
//
//     struct Reader {                                 // lives in the thread that uses it
//       explicit Reader( Name & );
//       bool lookup( Key key, Value & value );        // copies the value out, whole
//     };
//     struct Writer {                                 // one at a time
//       explicit Writer( Name & );
//       void insert( Record const & record );         // of a key that is not there
//       void overwrite( Record const & record );      // of a key that is there
//       bool remove( Key key );                       // was it there?
//     };
//   };
//
// One Reader or Writer at a time lives in a thread. What a peer may have besides, and is then used:
//
//     std::uint64_t Reader::lookupBatch( Key const * keys, unsigned n, Value * values );
//         // n <= 64; returns a bit for each key that was found, the first key's lowest
//     void Reader::quiet();                           // called between look-ups, at least after 64
//     void Writer::insertBatch( Record const * records, unsigned n );
//     void Writer::overwriteBatch( Record const * records, unsigned n );
//     double bytes();                                 // what all its entries take, all told
//     void afterFork();                               // in the process of a writer beside, first
#pragma once

#include <concepts>
#include <filesystem>
#include <stdexcept>

#include "Keys.h"

namespace Bench {

/// Where a second writer may be while a reader looks up: nowhere, or in a thread or a process.
enum class Beside { nowhere, thread, process };

/// What a peer is made for.
struct Room {
  std::filesystem::path folder;  ///< for its files; it vanishes with the program
  std::size_t reserve;           ///< entries to make room for at once; 0: it is to grow
  std::size_t most;              ///< entries that it will ever hold
};

/// The machine lacks what a peer needs; the text is a line for the user.
class Unavailable : public std::runtime_error {
 public:
  using runtime_error::runtime_error;
};

template< typename P >
concept Peer = requires( P & peer, typename P::Reader & reader, typename P::Writer & writer,
                         Record const & record, Key key, Value & value ) {
  requires std::constructible_from< P, Room const & >;
  requires std::constructible_from< typename P::Reader, P & >;
  requires std::constructible_from< typename P::Writer, P & >;
  { P::name } -> std::convertible_to< char const * >;
  { P::grows } -> std::convertible_to< bool >;
  { P::beside } -> std::convertible_to< Beside >;
  { reader.lookup( key, value ) } -> std::same_as< bool >;
  writer.insert( record );
  writer.overwrite( record );
  { writer.remove( key ) } -> std::same_as< bool >;
};

template< typename P >
concept LooksUpBatches = requires( typename P::Reader & reader, Key const * keys, Value * values ) {
  { reader.lookupBatch( keys, 64u, values ) } -> std::same_as< std::uint64_t >;
};
template< typename P >
concept BecomesQuiet = requires( typename P::Reader & reader ) {
  reader.quiet();
};
template< typename P >
concept InsertsBatches = requires( typename P::Writer & writer, Record const * records ) {
  writer.insertBatch( records, 32u );
};
template< typename P >
concept OverwritesBatches = requires( typename P::Writer & writer, Record const * records ) {
  writer.overwriteBatch( records, 32u );
};
template< typename P >
concept CountsBytes = requires( P & peer ) {
  { peer.bytes() } -> std::same_as< double >;
};
template< typename P >
concept WantsAfterFork = requires( P & peer ) {
  peer.afterFork();
};

}  // namespace Bench
