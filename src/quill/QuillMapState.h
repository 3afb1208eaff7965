// QuillMapState.h: what a QuillMap is whatever its values are: its name, how it was initialized,
// and what it has announced. One thread: the activity's.
#pragma once

#include <ntrace/Ntrace.h>
#include <quill/QuillType.h>

namespace Quill {

class KOI_PUBLIC QuillMapState {
 public:
  QuillMapState( QuillMapState const & ) = delete;
  QuillMapState & operator=( QuillMapState const & ) = delete;

  QuillType mode() const { return mode_; }
  std::string const & quillName() const { return name_; }
  std::string const & rootPath() const { return parameters_.root.path(); }
  /// The generation that files are trusted in; 0 when there is none.
  U32 kindleId() const;

  bool isNotifying() const { return isNotifying_; }

  /// Says that the collection is ready, once. Raises Rova::InvalidInitializeException
  /// "QuillMap::advertiseCollectionReady() in synchronous mode",
  /// "QuillMap::advertiseCollectionReady() collection already advertised" and
  /// "QuillMap::advertiseCollectionReady() notifications unexpectedly disabled".
  void advertiseCollectionReady();
  /// The collection is ready, or not yet.
  void collectionReadyIs( bool ready );

 protected:
  QuillMapState( std::string name, std::function< void() > onCollection,
                 Ntrace::Handler const & trace )
      : name_( std::move( name ) ), trace_( trace ), onCollection_( std::move( onCollection ) ) {}
  ~QuillMapState() = default;

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
