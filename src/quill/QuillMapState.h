// QuillMapState.h: what a QuillMap is and does whatever its values are: its name, how it was
// initialized, what it has announced, its files. One thread: the activity's.
#pragma once

#include <ntrace/Ntrace.h>
#include <quill/QuillType.h>

namespace Quill {

class KOI_PUBLIC QuillMapState {
 public:
  QuillMapState( QuillMapState const & ) = delete;
  QuillMapState & operator=( QuillMapState const & ) = delete;
  virtual ~QuillMapState() = default;

  /// Takes part in the table; `size` is the most entries it may hold, of a writer, and not looked
  /// at of a reader. Raises Rova::InvalidInitializeException "QuillMap::init() 0 is not a valid
  /// initialization size", "QuillMap::init() onReadyFn specified in synchronous mode",
  /// "QuillMap::init() name:<name> already initialized with mode:<mode> for collection <name>",
  /// with " in writer mode" where it is the writer's, and "QuillMap::init() not a valid reader
  /// type:<n>"; in writer mode what QuillWriter raises. Then nothing is changed.
  virtual void init( QuillType type, bool synchronous, U32 size,
                     QuillParameters parameters = {} ) = 0;
  virtual bool initialized() const = 0;
  QuillType mode() const { return mode_; }
  std::string const & quillName() const { return name_; }
  std::string const & rootPath() const { return parameters_.root.path(); }
  /// The generation that files are trusted in; 0 when there is none.
  U32 kindleId() const;

  /// Attached to the table's files.
  virtual bool isAttached() const = 0;
  /// How many entries there are, there is room for now, there may be.
  virtual U32 members() const = 0;
  virtual U32 capacity() const = 0;
  virtual U32 maxSize() const = 0;
  virtual U64 sequence() = 0;
  virtual ReaderCounters readerCounters() const = 0;
  virtual WriterCounters writerCounters() const = 0;

  // ---- telling

  /// Whether changes are told by key. A direct reader keeps the keys from then on, for only who
  /// knows which key was in a slot can say that it is gone. Raises Rova::InvalidInitializeException
  /// "QuillMap::notifying() not allowed at this time, initialized:False".
  virtual void notifying( bool enable ) = 0;
  bool isNotifying() const { return isNotifying_; }
  /// Tells every key that is there: of a copy by and by, between other work; else at once.
  virtual void tellAll() = 0;
  virtual bool isCollectionReady() const = 0;

  /// Says that the collection is ready, once. Raises Rova::InvalidInitializeException
  /// "QuillMap::advertiseCollectionReady() in synchronous mode",
  /// "QuillMap::advertiseCollectionReady() collection already advertised" and
  /// "QuillMap::advertiseCollectionReady() notifications unexpectedly disabled".
  void advertiseCollectionReady();
  /// The collection is ready, or not yet.
  void collectionReadyIs( bool ready );

  // ---- the files

  /// Lets the files go. A reader attaches again by and by.
  virtual void detach() = 0;
  /// Removes the table, in writer mode. The map is as before init() then.
  virtual void cleanup() = 0;
  /// Empty, or the first promise that what is mapped does not keep.
  virtual std::string validate() = 0;
  /// The same of the files as they stand by their names now.
  virtual std::string validateFiles() const = 0;
  /// Says so, lets the files go, and leaves a report beside the table: a reader's is written by the
  /// writer. They are attached again by and by, by the writer mended or made anew; then the
  /// collection is ready once more.
  virtual void corruptionDetected( std::string const & message ) = 0;

  /// How many notifications a copy takes at once, and how long it works before it yields, in
  /// seconds. Of a map that keeps no copy nothing changes.
  virtual void sampleIs( U32 sample ) = 0;
  virtual void yieldTimeIs( Koi::Seconds yieldTime ) = 0;

 protected:
  QuillMapState( std::string name, std::function< void() > onCollection,
                 Ntrace::Handler const & trace )
      : name_( std::move( name ) ), trace_( trace ), onCollection_( std::move( onCollection ) ) {}
  /// Takes what init() was given, or raises what it refuses and changes nothing.
  void beginInit( QuillType type, bool synchronous, U32 size, QuillParameters parameters,
                  bool isInitialized );
  /// Notifications were disabled, and are enabled now.
  bool beginsNotifying( bool enable );

  std::string const name_;
  Ntrace::Handler const trace_;
  QuillParameters parameters_;
  U32 size_ = 0;
  QuillType mode_ = QuillType::reader;
  bool isSynchronous_ = false;
  bool isAdvertised_ = false;
  bool isNotifying_ = false;

 private:
  std::function< void() > const onCollection_;
  bool wasNotifying_ = false;
};

}  // namespace Quill
