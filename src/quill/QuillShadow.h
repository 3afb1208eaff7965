// QuillShadow.h: a table that another process writes, with its changes told by key. It keeps a
// copy, of the values or of the keys alone, in step with the table: attached when the table's files
// come, and again when they are replaced. One thread: its activity's.
//
// It sleeps as long as nothing changes and is kicked by the writer; it takes what is new in
// portions and lets other work of the activity run in between. Without a writer that kicks it looks
// now and then.
//
// See ShadowEngine.h for what is told. While it is detached nothing is; the copy stays, and after
// it is attached again the differences are told.
#pragma once

#include <memory>
#include <optional>

#include <mem/CorruptionFile.h>
#include <mem/ReaderKickSm.h>
#include <quill/AttachedReader.h>
#include <quill/PendingKeys.h>
#include <quill/QuillType.h>
#include <quill/ShadowEngine.h>
#include <quill/TableMounter.h>

namespace Quill {

/// What a copy keeps.
enum class Keeps { values, keys };

template< class V, Keeps keeps >
class QuillShadow {
 public:
  using RecordOf = Record< V >;
  using Key = typename RecordOf::Key;
  static constexpr U32 numWords =
      keeps == Keeps::values ? numWordsOf< RecordOf > : KeyWords< RecordOf >::count;
  using Engine = ShadowEngine< RecordOf, Mem::Plain, numWords >;

  struct Handlers {
    /// The copy is whole, for the first time. What changes from now on is told.
    std::function< void() > onReady;
    /// The entry of that key came, changed or went; look it up.
    std::function< void( Key const & ) > onKey;
    /// It was attached, or the other way round.
    std::function< void( bool isAttached ) > onAttached;
  };
  /// How many notifications are taken at once, and how long it works before it lets others run, in
  /// seconds.
  static constexpr U32 defaultSample = 4096;
  static constexpr Koi::Seconds defaultYieldTime = 0.01;
  /// Seconds between two looks where nobody kicks.
  static constexpr Koi::Seconds lookEvery = 0.05;

  /// Attaches when the activity runs and the table is there.
  QuillShadow( Koi::Activity * activity, Mem::RootPath const & root, std::string const & name,
               Handlers handlers, Ntrace::Handler const & trace = Ntrace::Handler() )
      : trace_( trace ),
        root_( root ),
        name_( name ),
        handlers_( std::move( handlers ) ),
        kick_( activity, { [this] { goOn(); }, [this] { goOn(); } }, trace_ ),
        look_( activity, [this] { goOn(); } ),
        mounter_(
            activity, TableMounter::reader, root, name, [this] { return tryAttach(); }, trace_ ) {}

  bool isAttached() const { return dir_ != nullptr; }
  /// The copy was whole once. It may be behind.
  bool isReady() const { return engine_ && engine_->isSynchronized(); }
  /// The writer kicks it.
  bool isKicked() const { return kick_.isAttached(); }
  U32 numEntries() const { return engine_ ? engine_->store().numEntries() : 0; }
  /// Everything up to that sequence has been told, or is about to be.
  U64 sequence() const { return engine_ ? engine_->sequence() : 0; }

  /// Attaches and copies within this call, if there is a table; false when there is none yet.
  bool synchronize() {
    if( !tryAttach() )
      return false;
    while( isAttached() && !isReady() )
      goOn();
    return isReady();
  }

  /// The entry of a key as this has it; with keys alone, as the table has it now. Nothing as long
  /// as it is not ready. Raises as TableReader::lookup() does, with keys alone.
  std::optional< V > lookup( Key const & key ) {
    if( !isReady() )
      return std::nullopt;
    KeyWords< RecordOf > words{};
    RecordOf::putKey( key, words.word );
    return at( engine_->store().find( words ) );
  }
  /// Walks the copy: the entry at or behind a place, which moves behind it; nothing at the end.
  /// Begins with 0. What comes or goes meanwhile may be met or not.
  std::optional< V > next( U32 & place ) {
    if( !isReady() )
      return std::nullopt;
    auto const & store = engine_->store();
    for( ; place < store.numSlots(); ++place )
      // A key that moves is in two slots for a while.
      if( store.isOccupied( place ) && store.find( store.at( place ).key() ) == place )
        if( auto value = at( place ) ) {
          ++place;
          return value;
        }
    return std::nullopt;
  }

  /// Tells every key that is there, between other work; before it is ready, when it will be.
  void tellAll() {
    tellsAll_ = true;
    look_.delayIs( 0 );
  }

  /// What the engine has done, and the table's header as it is now.
  ReaderCounters counters() const {
    return engine_ ? ReaderCounters{ engine_->reader().numRetries(),
                                     engine_->queue().numNotifications(), engine_->numResyncs(),
                                     numAttached_ }
                   : ReaderCounters{};
  }
  SlotTable::Header header() const {
    return engine_ ? engine_->reader().slots().loaded() : SlotTable::Header{};
  }

  void sampleIs( U32 sample ) {
    trace_.trace( 5, "QuillShadow()::sampleIs() sample:", sample );
    sample_ = std::max( 1u, sample );
  }
  /// It never sleeps: a change costs neither the writer nor this process a system call, and this
  /// thread takes all of a core. Other handlers run every `wakefulTime`.
  void staysAwakeIs( bool staysAwake ) {
    staysAwake_ = staysAwake;
    if( isAttached() )
      look_.delayIs( 0 );
  }
  static constexpr std::chrono::microseconds wakefulTime{ 100 };
  /// So many looks at the queue between two at the clock.
  static constexpr U32 looksAtOnce = 16;

  void yieldTimeIs( Koi::Seconds yieldTime ) {
    trace_.trace( 5, "QuillShadow()::yieldTimeIs() yieldTime:", yieldTime );
    yieldTime_ = yieldTime;
  }

  /// Empty, or why the table's header is not believed.
  std::string validate() const {
    std::string why;
    if( engine_ )
      header().validate( trace_, engine_->reader().slots().file().size(), 0, why );
    return why;
  }

  /// Lets the files go. The copy stays; it is attached again by and by.
  void detach() {
    if( !isAttached() )
      return trace_.trace( 5, "QuillShadow::detach() already detached" );
    look_.timeDel();
    kick_.detach();
    dir_.reset();
    trace_.trace( 2, "QuillShadow::detach() detached" );
    mounter_.remount();
    handlers_.onAttached( false );
  }
  /// What was read cannot be: says so, to the writer too, and detaches; attaches again by and by.
  void corruptionDetected( std::string const & message ) {
    trace_.trace( 1, "QuillMap::corruptionDetected() ", name_, " ", message );
    kick_.reportCorruption( message );
    detach();
  }

 private:
  std::optional< V > at( U32 slot ) {
    if( slot == noIndex )
      return std::nullopt;
    auto const & words = engine_->store().at( slot );
    if constexpr( keeps == Keeps::values ) {
      return RecordOf::value( words.word );
    } else {
      typename Engine::Value value;
      if( !engine_->reader().lookup( words.key(), value ) )
        return std::nullopt;
      return RecordOf::value( value.word );
    }
  }

  /// Also when it is attached: to other files when these were replaced, and to a writer that came.
  bool tryAttach() {
    try {
      if( dir_ && !isReplaced( root_, name_, engine_->reader().slots().file() ) ) {
        kick_.attach( *dir_ );
        return true;
      }
      auto dir = std::make_unique< Mem::TableDir >( root_, name_, Mem::MappedFile::readOnly );
      auto reader = readerForCopy< RecordOf >( *dir, keeps == Keeps::keys, trace_ );
      auto queue = attachedQueue( *dir, reader->slots().file(), trace_ );
      if( engine_ )
        engine_->moved( std::move( reader ), std::move( queue ) );
      else
        engine_ = std::make_unique< Engine >( std::move( reader ), std::move( queue ), trace_ );
      bool const wasAttached = isAttached();
      ++numAttached_;
      kick_.detach();
      dir_ = std::move( dir );
      kick_.attach( *dir_ );
      trace_.trace( 2, "CANARY: mounted ", name_ );
      if( !wasAttached )
        handlers_.onAttached( true );
      goOn();
      return true;
    } catch( Rova::MemoryResourceException const & e ) {
      trace_.trace( 5, "ReaderMounter: ", e.what() );
    } catch( Rova::CorruptionDetectedException const & e ) {
      trace_.trace( 2, "ReaderMounter: ", e.what() );
    }
    // Files that are gone are still mapped: what is known stays until others come.
    return false;
  }

  /// Works for a while, and sees to it that it goes on.
  void goOn() {
    if( !isAttached() )
      return;
    kick_.awaken();
    bool isDone = worksSafely();
    if( staysAwake_ ) {
      // What comes meanwhile is taken here: a turn of the activity takes longer than all the rest.
      auto const end = Engine::Clock::now() + wakefulTime;
      bool isInTime = true;
      for( U32 looks = 1; isAttached() && isDone && isInTime; ++looks ) {
        bool const isBehind = engine_->queue().isBehind();
        if( isBehind )
          isDone = worksSafely();
        if( isBehind || looks % looksAtOnce == 0 )
          isInTime = Engine::Clock::now() < end;
      }
    } else if( isAttached() && isDone ) {
      kick_.sleep();
      if( !engine_->queue().isBehind() ) {
        if( !kick_.isAttached() )
          look_.delayIs( lookEvery );
        return;
      }
      kick_.awaken();
    }
    if( isAttached() )
      look_.delayIs( 0 );
  }
  /// The same as work(); what it raises detaches, or is for the next time.
  bool worksSafely() {
    try {
      return work();
    } catch( Rova::CorruptionDetectedException const & e ) {
      corruptionDetected( e.what() );
    } catch( Rova::MemoryResourceException const & e ) {
      trace_.trace( 0, "QuillShadow: ", e.what() );
      detach();
    } catch( ReaderStarvedException const & e ) {
      trace_.trace( 0, "QuillShadow: ", e.what() );
    }
    return false;
  }
  /// Until the time is over or there is no more, which it says.
  bool work() {
    auto const end =
        Engine::Clock::now() + std::chrono::duration_cast< typename Engine::Clock::duration >(
                                   std::chrono::duration< double >( yieldTime_ ) );
    if( !changed_.told( end, handlers_.onKey ) )
      return false;
    bool const wasReady = isReady();
    if( wasReady && std::exchange( tellsAll_, false ) )
      engine_->tellAll();
    bool const isDone = engine_->goOn(
        end, sample_, [this]( KeyWords< RecordOf > const & key ) { changed_.add( key ); } );
    kick_.acknowledgedIs( engine_->sequence() );
    trace_.trace( 8, "ConquerReader::handleAck() minSeq:", engine_->sequence() );
    if( isReady() && !wasReady )
      handlers_.onReady();
    return changed_.told( end, handlers_.onKey ) && isDone && !tellsAll_;
  }
  Ntrace::Handler const trace_;
  Mem::RootPath const root_;
  std::string const name_;
  Handlers const handlers_;
  U32 sample_ = defaultSample;
  Koi::Seconds yieldTime_ = defaultYieldTime;
  bool staysAwake_ = false;
  bool tellsAll_ = false;  // when it works next
  std::unique_ptr< Mem::TableDir > dir_;
  std::unique_ptr< Engine > engine_;
  PendingKeys< RecordOf > changed_;
  U64 numAttached_ = 0;
  Mem::ReaderKickSm kick_;
  Koi::Timer look_;
  TableMounter mounter_;
};

}  // namespace Quill
