// QuillMap.h: one table as a process takes part in it: as its writer, by a copy of its own, or by
// reading the writer's files; the same calls for all. One thread: the activity's.
//
// It is initialized once, then attached whenever the table is there. In synchronous mode a writer
// is attached when init() returns, and a reader that finds a table has read it. Otherwise it is
// when onReadyFn is called, whose owner advertises the collection when he has done with it what he
// has to do; without onReadyFn the collection is advertised at once.
#pragma once

#include <koi/Assert.h>
#include <quill/FrontEnd.h>
#include <quill/QuillMapState.h>

namespace Quill {

template< class V >
class QuillMap : public QuillMapState {
 public:
  using Key = typename Record< V >::Key;
  using Hint = WalkPlace< Key >;

  struct Handlers {
    /// The collection is ready: it was advertised.
    std::function< void() > onCollection;
    /// The entry of that key came, changed or went. Of a reader, while notifications are enabled.
    std::function< void( Key const & ) > onKey;
  };

  /// A table by its name below the root.
  explicit QuillMap( std::string quillName, Handlers handlers = {},
                     Ntrace::Handler const & trace = Ntrace::Handler() )
      : QuillMapState( std::move( quillName ), std::move( handlers.onCollection ), trace ),
        onKey_( std::move( handlers.onKey ) ) {}

  void init( QuillType type, bool synchronous, U32 size,
             QuillParameters parameters = {} ) override {
    beginInit( type, synchronous, size, std::move( parameters ), initialized() );
    if( type == QuillType::writer )
      writerIsMade();
    else
      readerIsMade();
    if( synchronous )  // who finds no table has to be told when there is one
      isAdvertised_ = end_->isReady();
  }

  bool initialized() const override { return end_ != nullptr; }
  bool isAttached() const override { return end_ && end_->isAttached(); }
  U32 capacity() const override { return end_ ? end_->capacity() : 0; }
  U32 maxSize() const override { return end_ ? end_->maxSize() : 0; }
  U32 members() const override { return end_ ? end_->members() : 0; }
  U64 sequence() override { return end_ ? end_->sequence() : 0; }
  ReaderCounters readerCounters() const override {
    return end_ ? end_->readerCounters() : ReaderCounters{};
  }
  WriterCounters writerCounters() const override {
    auto const * const writer = end_ ? end_->writer() : nullptr;
    if( !writer )
      return {};
    auto const & queue = writer->engine().queue();
    auto const * const kicks = writer->kicks();
    return { queue.numNotifications(), queue.numTombstones(), kicks ? kicks->numKicks() : 0,
             kicks ? kicks->numReaders() : 0 };
  }

  // ---- looking

  /// The entry of a key, when there is one; `found` says so. Nothing is found while no table is
  /// attached. Raises as TableReader::lookup() does.
  void lookup( Key const & key, bool & found, V & out ) {
    auto const value = end_ ? end_->lookup( key ) : std::nullopt;
    if( ( found = value.has_value() ) )
      out = *value;
  }
  /// Walks all entries, in an order of the table's own: false at the end. The hint says where the
  /// walk stands. Raise as TableReader::lookup() does.
  bool first( V & out, Hint & hint ) {
    hint = {};
    return walkedTo( out, hint );
  }
  bool next( Key const & key, V & out, Hint & hint ) {
    hint.key = key;
    return walkedTo( out, hint );
  }
  /// The same; corrupt files are reported, and then nothing is found.
  void safeLookup( Key const & key, bool & found, V & out ) {
    found = false;
    safely( "QuillMap::safeLookup() in no man's land", [&] { lookup( key, found, out ); } );
  }

  // ---- writing: in writer mode

  /// Inserts or replaces, and deletes; false when there was none. Raise as QuillWriter does.
  void write( V const & value ) { writer().write( value ); }
  bool remove( Key const & key ) { return writer().remove( key ).has_value(); }
  /// The same; corrupt files are reported, and then nothing was changed. TableFullException and
  /// Rova::MemoryResourceException are the caller's.
  void safeWrite( V const & value ) {
    safely( "QuillMap::safeWrite() in no man's land", [&] { write( value ); } );
  }
  bool safeRemove( Key const & key ) {
    bool isRemoved = false;
    safely( "QuillMap::safeRemove() in no man's land", [&] { isRemoved = remove( key ); } );
    return isRemoved;
  }
  /// safeWrite() of what is not there already, which it says: nobody is told of what did not
  /// change.
  bool safeWriteChange( V const & value ) {
    bool isChange = false;
    safely( "QuillMap::safeWrite() in no man's land",
            [&] { isChange = writer().writeChange( value ); } );
    return isChange;
  }
  /// Completes a direct write of that value, whose key was opened by QuillWriter::directWrite().
  void directCommit( V const & value ) {
    safely( "QuillMap::directCommit() in no man's land", [&] {
      writer().directValueIs( value );
      writer().directCommit();
    } );
  }
  /// In writer mode, which it asserts. Raises Rova::MemoryResourceException "<name> is not
  /// attached": another process writes it, or it was corrupt.
  QuillWriter< V > & writer() {
    KOI_ASSERT( initialized() && mode_ == QuillType::writer );
    if( !end_->writer() )
      throw Rova::MemoryResourceException( name_ + " is not attached" );
    return *end_->writer();
  }

  // ---- telling

  void notifying( bool enable ) override {
    if( !initialized() )
      throw Rova::InvalidInitializeException(
          "QuillMap::notifying() not allowed at this time, initialized:False" );
    if( !beginsNotifying( enable ) || mode_ == QuillType::writer )
      return;
    if( mode_ == QuillType::reader && !isKeeping_ ) {
      isKeeping_ = true;
      readerIsMade();
    } else if( parameters_.notifyFlush && end_->isReady() ) {
      tellAll();
    }
  }
  void tellAll() override {
    bool isLeftToCopy = false;
    ofCopy( [&]( auto & shadow ) {
      shadow.tellAll();
      isLeftToCopy = true;
    } );
    V value;
    for( Hint hint; !isLeftToCopy && walkedTo( value, hint ); )
      told( keyOf( value ) );
  }
  bool isCollectionReady() const override { return isAdvertised_ && end_ && end_->isReady(); }

  // ---- the files

  void detach() override {
    if( end_ )
      end_->detach();
  }
  void cleanup() override {
    writer().cleanup();
    end_.reset();
  }
  std::string validate() override { return end_ ? end_->validate() : ""; }
  std::string validateFiles() const override {
    try {
      Mem::TableDir const dir( parameters_.root, name_, Mem::MappedFile::readOnly );
      attachedQueue( dir, attachedReader< Record< V > >( dir, trace_ )->slots().file(), trace_ );
      return {};
    } catch( Koi::Exception const & e ) {
      return e.what();
    }
  }
  void corruptionDetected( std::string const & message ) override {
    if( auto * const shadow = copy< Keeps::values >() )
      return shadow->shadow().corruptionDetected( message );
    if( auto * const shadow = copy< Keeps::keys >() )
      return shadow->shadow().corruptionDetected( message );
    trace_.trace( 1, "QuillMap::corruptionDetected() ", name_, " ", message );
    bool const isWriter = end_ && end_->writer();
    detach();
    if( !isWriter )
      return;
    Util::writeCorruptionFile( Mem::TableDir( parameters_.root, name_, Mem::MappedFile::writable ),
                               message );
    isReadySaid_ = false;
    collectionReadyIs( false );
    end_->remount();
  }

  void sampleIs( U32 sample ) override {
    ofCopy( [&]( auto & shadow ) { shadow.sampleIs( sample ); } );
  }
  void yieldTimeIs( Koi::Seconds yieldTime ) override {
    ofCopy( [&]( auto & shadow ) { shadow.yieldTimeIs( yieldTime ); } );
  }

 private:
  void writerIsMade() {
    TableParameters table;
    table.classType = parameters_.classType;
    table.maxSlots = size_;
    table.fixedCapacity = parameters_.fixedCapacity;
    table.shrinkSlots = parameters_.shrinkSlots;
    table.pruneConquer = parameters_.pruneConquer;
    table.readers = parameters_.readers;
    table.activity = parameters_.activity;
    auto end = std::make_unique< WriterEnd< V > >(
        parameters_.root, name_, table, [this] { ready(); }, trace_ );
    if( isSynchronous_ )
      end->attach();
    end_ = std::move( end );
  }
  void readerIsMade() {
    typename FrontEnd< V >::Handlers const handlers{ [this] { ready(); },
                                                     [this]( Key const & key ) { told( key ); } };
    auto const made = [&]< class End >( std::type_identity< End > ) {
      auto end = std::make_unique< End >( parameters_.activity, parameters_.root, name_, handlers,
                                          trace_ );
      auto & it = *end;
      end_ = std::move( end );
      return &it;
    };
    if( mode_ == QuillType::reader && !isKeeping_ ) {
      auto * const end = made( std::type_identity< ReaderEnd< V > >() );
      if( isSynchronous_ )
        end->tryAttach();
    } else if( mode_ == QuillType::shadow ) {
      auto * const end = made( std::type_identity< ShadowEnd< V, Keeps::values > >() );
      if( isSynchronous_ )
        end->shadow().synchronize();
    } else {
      auto * const end = made( std::type_identity< ShadowEnd< V, Keeps::keys > >() );
      if( isSynchronous_ )
        end->shadow().synchronize();
    }
  }
  /// The table is there for the first time; of a reader that begins to keep keys, once more.
  void ready() {
    if( !parameters_.onReadyFn )
      collectionReadyIs( true );
    else if( !std::exchange( isReadySaid_, true ) )
      parameters_.onReadyFn();
    if( isNotifying_ && parameters_.notifyFlush )
      tellAll();
  }
  void told( Key const & key ) {
    if( isNotifying_ && onKey_ )
      onKey_( key );
  }
  bool walkedTo( V & out, Hint & hint ) {
    auto const value = end_ ? end_->next( hint ) : std::nullopt;
    if( value )
      out = *value;
    return value.has_value();
  }

  template< class Operation >
  void safely( char const * where, Operation operation ) {
    try {
      operation();
    } catch( Rova::CorruptionDetectedException const & e ) {
      corruptionDetected( e.what() );
    } catch( TableFullException const & ) {
      throw;
    } catch( Rova::MemoryResourceException const & ) {
      throw;
    } catch( std::exception const & e ) {
      trace_.trace( 0, where, ": ", e.what() );
      Koi::assertionFailed( where, __FILE__, __LINE__ );
    }
  }

  template< Keeps keeps >
  ShadowEnd< V, keeps > * copy() {
    return dynamic_cast< ShadowEnd< V, keeps > * >( end_.get() );
  }
  template< class Call >
  void ofCopy( Call call ) {
    if( auto * const values = copy< Keeps::values >() )
      call( values->shadow() );
    if( auto * const keys = copy< Keeps::keys >() )
      call( keys->shadow() );
  }

  std::function< void( Key const & ) > const onKey_;
  bool isReadySaid_ = false;
  bool isKeeping_ = false;  // keys, for a direct reader's notifications
  std::unique_ptr< FrontEnd< V > > end_;
};

}  // namespace Quill
