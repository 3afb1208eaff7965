// FrontEnd.h: what all ways to take part in a table have in common, and two of them: the writer's
// and the direct reader's. The copies are QuillShadow's. One thread: the activity's.
#pragma once

#include <memory>
#include <optional>

#include <quill/QuillReader.h>
#include <quill/QuillShadow.h>
#include <quill/QuillType.h>
#include <quill/QuillWriter.h>

namespace Quill {

/// Where a walk stands.
template< class Key >
struct WalkPlace {
  std::optional< Key > key;  ///< behind which it goes on; at the beginning: none
  U32 place = 0;             ///< of a walk by slots
};

template< class V >
class FrontEnd {
 public:
  using Key = typename Record< V >::Key;

  struct Handlers {
    std::function< void() > onReady;
    std::function< void( Key const & ) > onKey;
  };

  virtual ~FrontEnd() = default;

  virtual bool isAttached() const = 0;
  /// What is there can be looked up.
  virtual bool isReady() const = 0;
  virtual std::optional< V > lookup( Key const & key ) = 0;
  virtual std::optional< V > next( WalkPlace< Key > & place ) = 0;
  virtual U32 members() const = 0;
  virtual U32 capacity() const = 0;
  virtual U32 maxSize() const = 0;
  virtual U64 sequence() = 0;
  virtual ReaderCounters readerCounters() const { return {}; }
  virtual void detach() = 0;
  /// What was let go is attached again by and by. A reader sees to that by itself.
  virtual void remount() {}
  /// Finds a fault in what it has, and says so by what it returns.
  virtual std::string validate() = 0;
  virtual QuillWriter< V > * writer() { return nullptr; }
};

/// The entry behind the walk's key, or the first one, in the reader's files.
template< class V >
std::optional< V > walkedOn( QuillReader< V > & reader,
                             WalkPlace< typename Record< V >::Key > & place ) {
  auto const value = place.key ? reader.next( *place.key ) : reader.first();
  if( value )
    place.key = keyOf( *value );
  return value;
}

/// The table's writer: by attach(), or as soon as no other process is. Walks go by a reader of its
/// own.
template< class V >
class WriterEnd final : public FrontEnd< V > {
 public:
  using Key = typename Record< V >::Key;

  WriterEnd( Mem::RootPath const & root, std::string const & name,
             TableParameters const & parameters, std::function< void() > onReady,
             Ntrace::Handler const & trace )
      : root_( root ),
        name_( name ),
        parameters_( parameters ),
        onReady_( std::move( onReady ) ),
        trace_( trace ),
        mounter_(
            parameters.activity, TableMounter::writer, root, name, [this] { return tryAttach(); },
            trace ) {}

  /// Raises as the constructor of QuillWriter does.
  void attach() {
    writer_ = std::make_unique< QuillWriter< V > >( root_, name_, parameters_, trace_ );
  }

  bool isAttached() const override { return writer_ != nullptr; }
  bool isReady() const override { return isAttached(); }
  std::optional< V > lookup( Key const & key ) override {
    return writer_ ? writer_->value( key ) : std::nullopt;
  }
  std::optional< V > next( WalkPlace< Key > & place ) override {
    if( !writer_ )
      return std::nullopt;
    if( !walker_ )
      walker_ = std::make_unique< QuillReader< V > >( root_, name_, trace_ );
    return walkedOn( *walker_, place );
  }
  U32 members() const override { return writer_ ? writer_->numEntries() : 0; }
  U32 capacity() const override { return writer_ ? writer_->capacity() : 0; }
  U32 maxSize() const override { return parameters_.maxSlots; }
  U64 sequence() override { return writer_ ? writer_->sequence() : 0; }
  void detach() override {
    walker_.reset();
    writer_.reset();
  }
  void remount() override { mounter_.remount(); }
  std::string validate() override { return writer_ ? writer_->validate() : ""; }
  QuillWriter< V > * writer() override { return writer_.get(); }

 private:
  bool tryAttach() {
    if( isAttached() )
      return true;
    try {
      attach();
    } catch( Rova::MemoryResourceException const & e ) {
      trace_.trace( 2, "WriterMounter: ", e.what() );
      return false;
    }
    trace_.trace( 2, "CANARY: mounted ", name_ );
    onReady_();
    return true;
  }

  Mem::RootPath const root_;
  std::string const name_;
  TableParameters const parameters_;
  std::function< void() > const onReady_;
  Ntrace::Handler const & trace_;
  std::unique_ptr< QuillWriter< V > > writer_;
  std::unique_ptr< QuillReader< V > > walker_;
  TableMounter mounter_;
};

/// Reads the writer's files, as soon as there are any. Tells nobody anything.
template< class V >
class ReaderEnd final : public FrontEnd< V > {
 public:
  using Key = typename Record< V >::Key;

  ReaderEnd( Koi::Activity * activity, Mem::RootPath const & root, std::string const & name,
             typename FrontEnd< V >::Handlers handlers, Ntrace::Handler const & trace )
      : root_( root ),
        name_( name ),
        handlers_( std::move( handlers ) ),
        trace_( trace ),
        mounter_(
            activity, TableMounter::reader, root, name, [this] { return tryAttach(); }, trace ) {}

  /// Attaches now, if there is anything to attach to.
  bool tryAttach() {
    try {
      if( reader_ && !reader_->isReplaced() )
        return true;
      auto reader = std::make_unique< QuillReader< V > >( root_, name_, trace_ );
      reader_ = std::move( reader );
    } catch( Rova::MemoryResourceException const & e ) {
      trace_.trace( 5, "ReaderMounter: ", e.what() );
      return false;
    } catch( Rova::CorruptionDetectedException const & e ) {
      trace_.trace( 2, "ReaderMounter: ", e.what() );
      return false;
    }
    trace_.trace( 2, "CANARY: mounted ", name_ );
    if( numAttached_++ == 0 )
      handlers_.onReady();
    return true;
  }

  bool isAttached() const override { return reader_ != nullptr; }
  bool isReady() const override { return isAttached(); }
  std::optional< V > lookup( Key const & key ) override {
    return reader_ ? reader_->lookup( key ) : std::nullopt;
  }
  std::optional< V > next( WalkPlace< Key > & place ) override {
    return reader_ ? walkedOn( *reader_, place ) : std::nullopt;
  }
  U32 members() const override { return header().occupiedSlots; }
  U32 capacity() const override { return header().numSlots.ref; }
  U32 maxSize() const override { return header().maxSlots; }
  U64 sequence() override { return reader_ ? reader_->sequence() : 0; }
  ReaderCounters readerCounters() const override {
    return { reader_ ? reader_->engine().numRetries() : 0, 0, 0, numAttached_ };
  }
  void detach() override {
    trace_.trace(
        5, reader_ ? "QuillReader::detach() detached" : "QuillReader::detach() already detached" );
    if( !std::exchange( reader_, nullptr ) )
      return;
    mounter_.remount();
  }
  std::string validate() override {
    std::string why;
    if( reader_ )
      header().validate( trace_, reader_->engine().slots().file().size(), 0, why );
    return why;
  }

 private:
  SlotTable::Header header() const {
    return reader_ ? reader_->engine().slots().loaded() : SlotTable::Header{};
  }

  Mem::RootPath const root_;
  std::string const name_;
  typename FrontEnd< V >::Handlers const handlers_;
  Ntrace::Handler const & trace_;
  std::unique_ptr< QuillReader< V > > reader_;
  U64 numAttached_ = 0;
  TableMounter mounter_;
};

/// A copy of the table, of values or of keys alone.
template< class V, Keeps keeps >
class ShadowEnd final : public FrontEnd< V > {
 public:
  using Key = typename Record< V >::Key;

  ShadowEnd( Koi::Activity * activity, Mem::RootPath const & root, std::string const & name,
             typename FrontEnd< V >::Handlers handlers, Ntrace::Handler const & trace )
      : shadow_( activity, root, name, { handlers.onReady, handlers.onKey, []( bool ) {} },
                 trace ) {}

  QuillShadow< V, keeps > & shadow() { return shadow_; }

  bool isAttached() const override { return shadow_.isAttached(); }
  bool isReady() const override { return shadow_.isReady(); }
  std::optional< V > lookup( Key const & key ) override { return shadow_.lookup( key ); }
  std::optional< V > next( WalkPlace< Key > & place ) override {
    return shadow_.next( place.place );
  }
  U32 members() const override { return shadow_.numEntries(); }
  U32 capacity() const override { return shadow_.header().numSlots.ref; }
  U32 maxSize() const override { return shadow_.header().maxSlots; }
  U64 sequence() override { return shadow_.sequence(); }
  ReaderCounters readerCounters() const override { return shadow_.counters(); }
  void detach() override { shadow_.detach(); }
  std::string validate() override { return shadow_.validate(); }

 private:
  QuillShadow< V, keeps > shadow_;
};

}  // namespace Quill
