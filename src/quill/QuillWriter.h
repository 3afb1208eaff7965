// QuillWriter.h: a table's writer. One process writes a table, on one thread; any number read it,
// with QuillReader.
//
// Values go by their Record; see TableWriter.h for what holds when the process is stopped.
#pragma once

#include <optional>
#include <random>
#include <vector>

#include <mem/CorruptionFile.h>
#include <mem/Plain.h>
#include <mem/WriterKickSm.h>
#include <quill/TableAttach.h>

namespace Quill {

/// How a table is made, how it may grow, and who is told.
struct TableParameters {
  std::string classType;       ///< the name of the table's class, at most 63 characters
  U32 maxSlots = 1 << 24;      ///< the most entries it may ever hold, below 2^31
  U32 minSlots = 8;            ///< it never shrinks below that
  U32 initialSlots = 8;        ///< of a new table
  bool fixedCapacity = false;  ///< a new table has maxSlots at once, and never resizes
  bool shrinkSlots = true;
  bool pruneConquer = true;  ///< what no reader needs any more leaves the queue
  U32 readers = Mem::WriterKickSm::mostReadersOfAUser;  ///< the most of one user
  std::optional< U32 > seed;  ///< of a new table's hash; without it, by chance
  /// On which readers attach, to be kicked when there is something new; without it they look now
  /// and then. The writer's thread runs it.
  Koi::Activity * activity = nullptr;
};

template< class V >
class QuillWriter {
 public:
  using RecordOf = Record< V >;
  using Key = typename RecordOf::Key;
  using Engine = TableWriter< RecordOf, Mem::Plain >;

  /// Attaches to the table `name`, or makes it. Raises Rova::MemoryResourceException "<path> has a
  /// writer already", "SlotWriter::attach() cannot attach to shmem: <why>" and what TableDir
  /// raises; Rova::InvalidInitializeException "QuillMap::init() 0 is not a valid initialization
  /// size" and for a type name of 64 characters or more.
  QuillWriter( Mem::RootPath const & root, std::string_view name,
               TableParameters const & parameters,
               Ntrace::Handler const & trace = Ntrace::Handler() )
      : trace_( trace ), dir_( root, name, Mem::MappedFile::writable ), parameters_( parameters ) {
    if( parameters.maxSlots == 0 || parameters.maxSlots >= endBit || parameters.minSlots == 0 )
      throw Rova::InvalidInitializeException( "QuillMap::init() " +
                                              std::to_string( parameters.maxSlots ) +
                                              " is not a valid initialization size" );
    if( !dir_.tryLock() )
      throw Rova::MemoryResourceException( dir_.path() + " has a writer already" );
    if( parameters.activity )
      kicks_.emplace( parameters.activity, dir_,
                      Mem::WriterKickSm::Handlers{
                          [this] { engine_->queue().numReadersIs( kicks_->numReaders() ); },
                          [this]( std::string const & why ) { corruptionReported( why ); } },
                      trace_, parameters.readers );
    attach();
  }

  Attached attached() const { return attached_; }

  /// Inserts or replaces an entry. Raises as TableWriter::write() does.
  void write( V const & value, bool notifies = true ) {
    engine_->write( words( value ), notifies );
  }
  /// Inserts or replaces what is not there already, as it stands in the slot; false when it is.
  bool writeChange( V const & value ) {
    auto const w = words( value );
    auto const found = engine_->buckets().find( w.key(), engine_->buckets().hash( w.key() ) );
    typename Engine::Value was;
    if( found.slot != noIndex ) {
      auto const & view = engine_->slots().view();
      loadWords< Mem::Plain, numWordsOf< RecordOf > >( was.word,
                                                       view.value( view.at( found.slot ) ) );
      if( std::equal( was.word, was.word + numWordsOf< RecordOf >, w.word ) )
        return false;
    }
    engine_->write( w );
    return true;
  }
  /// As many in order, faster: with what each touches fetched ahead.
  void write( std::span< V const > values, bool notifies = true ) {
    batch_.resize( values.size() );
    for( std::size_t i = 0; i < values.size(); ++i )
      batch_[i] = words( values[i] );
    engine_->write( std::span< typename Engine::Value const >( batch_ ), notifies );
  }
  /// Deletes an entry; what comes back is what it was, nothing when there was none.
  std::optional< V > remove( Key const & key ) {
    typename Engine::Value was;
    if( !engine_->remove( keyWords( key ), &was ) )
      return std::nullopt;
    return RecordOf::value( was.word );
  }
  /// What the writer itself has of a key.
  std::optional< V > value( Key const & key ) const {
    auto const k = keyWords( key );
    auto const found = engine_->buckets().find( k, engine_->buckets().hash( k ) );
    if( found.slot == noIndex )
      return std::nullopt;
    auto const & view = engine_->slots().view();
    return RecordOf::value( view.value( view.at( found.slot ) ) );
  }

  /// Opens an entry for writing in place: its value as it is, or a new one's default, is changed by
  /// directValueIs() until directCommit(). Readers have it as it was until then. No other operation
  /// may come between. Raises as TableWriter::directWrite() does.
  V directWrite( Key const & key ) {
    direct_ = engine_->directWrite( keyWords( key ) );
    return RecordOf::value( direct_ );
  }
  /// Writes the open entry's value, whose key is to be the one that was opened.
  void directValueIs( V const & value ) {
    KOI_ASSERT( direct_ != nullptr );
    auto const w = words( value );
    storeWords< Mem::Plain, numWordsOf< RecordOf > >( direct_, w.word );
  }
  void directCommit( bool notifies = true ) {
    direct_ = nullptr;
    engine_->directCommit( notifies );
  }

  /// Who follows the table; null without an activity.
  Mem::WriterKickSm const * kicks() const { return kicks_ ? &*kicks_ : nullptr; }

  /// Moves to shorter files when half of them would do.
  void shrink() { engine_->shrink(); }

  /// Empty, or the first promise that the table does not keep: "I4 ...".
  std::string validate() const { return Validator< RecordOf, Mem::Plain >( *engine_ ).fault(); }

  /// Removes the table's files. The writer is of no use then; readers keep what they map.
  void cleanup() {
    trace_.trace( 2, "QuillWriter::cleanup() removing ", dir_.path() );
    engine_.reset();
    kicks_.reset();
    for( char const * file : { SlotTable::fileName, BucketTable::fileName,
                               ConquerTable::fileName[0], ConquerTable::fileName[1] } ) {
      trace_.trace( 3, "SlotWriter::cleanup() removing file:", dir_.path(), "/", file );
      dir_.remove( file );
    }
  }

  U32 numEntries() const { return engine_->slots().occupiedSlots(); }
  U32 capacity() const { return engine_->slots().numSlots(); }
  U64 sequence() const { return engine_->queue().sequence(); }
  Engine & engine() { return *engine_; }
  Engine const & engine() const { return *engine_; }

 private:
  static typename Engine::Value words( V const & value ) {
    typename Engine::Value w{};
    RecordOf::put( value, w.word );
    return w;
  }
  static KeyWords< RecordOf > keyWords( Key const & key ) {
    KeyWords< RecordOf > w{};
    RecordOf::putKey( key, w.word );
    return w;
  }

  void corruptionReported( std::string const & why ) {
    trace_.trace( 1, "QuillMap::corruptionDetected() ", dir_.path(), " a reader reports: ", why );
    Util::writeCorruptionFile( dir_, why );
  }

  void attach() {
    dir_.remove( Util::corruptionFile );
    U32 const seed = parameters_.seed ? *parameters_.seed : std::random_device()();
    using Attach = TableAttach< RecordOf, Mem::Plain >;
    Attach attach( dir_,
                   { { RecordOf::valueType, parameters_.classType, RecordOf::valueSize,
                       parameters_.maxSlots, seed },
                     { std::min( parameters_.minSlots, parameters_.maxSlots ), parameters_.maxSlots,
                       parameters_.fixedCapacity, parameters_.shrinkSlots },
                     parameters_.initialSlots,
                     parameters_.pruneConquer,
                     kicks_ ? &*kicks_ : nullptr },
                   trace_ );
    engine_ = attach.attach();
    attached_ = attach.attached();
    static constexpr char const * how[] = { " to new file", " re-formatted", " to existing" };
    auto const index = static_cast< std::size_t >( attached_ );
    trace_.trace( 2, "SlotWriter::attach()", how[index] );
    trace_.trace( 2, "ConquerWriter::attachConquer()", how[index] );
    if( attached_ == Attached::reformatted )
      trace_.trace( 2, "QuillWriter::attach(): re-formatted successfully" );
    trace_.trace( 2, "QuillWriter::attach() success" );
  }

  Ntrace::Handler const trace_;
  Mem::TableDir dir_;
  TableParameters const parameters_;
  std::optional< Mem::WriterKickSm > kicks_;
  std::unique_ptr< Engine > engine_;
  Attached attached_ = Attached::toNew;
  U32 * direct_ = nullptr;
  std::vector< typename Engine::Value > batch_;
};

}  // namespace Quill
