// FlowOut.h: what the attributes of an entity write for the peer of an attribute log, and what they
// read of what the peer wrote. The frames round it are the Mirror's.
//
// A member of a collection is an operation, a key and what makes the member. A scalar is its value.
// The only child of an attribute is an operation and what makes the child. What makes a child is
// its number on this connection, its incarnation, and the arguments of its constructor behind the
// key. A reference is a kind, and a path or an orphan.
#pragma once

#include <koi/Exception.h>
#include <koi/NboAttrLog.h>

namespace Koi {

class Entity;
class KoiNboAttrLogSa;
class Mirror;

/// What is said of one member, or of a collection.
enum class LogOp : U8 {
  absent,      ///< a key: it is not there
  present,     ///< a key and what makes the member: it is there
  anew,        ///< the same, and it is another one than before
  beginWhole,  ///< all members follow
  endWhole,    ///< what was not named since is not there
  tail,        ///< of a queue: the number that the next one gets
  crossed  ///< of a queue: the source's changes were not made, for the proxy had changed it, too
};

/// What a reference refers to.
enum class LogReference : U8 { null, below, absolute, orphan };

class KOI_PUBLIC FlowOut {
 public:
  /// So large does a frame grow before another one is begun, in bytes.
  static constexpr std::size_t frameSize = 64 * 1024;

  /// No frame is longer, with what stands before its content.
  static constexpr std::size_t frameSizeMost = 64 * 1024 * 1024;
  static constexpr std::size_t headSize = 16;

  explicit FlowOut( Mirror & mirror ) : mirror_( mirror ) {}
  FlowOut( FlowOut const & ) = delete;
  FlowOut & operator=( FlowOut const & ) = delete;

  /// What is written next is of that attribute, for the first time and whole, or not.
  void begin( KoiNboAttrLogSa & adapter, unsigned attribute, bool isFirst ) {
    adapter_ = &adapter;
    attribute_ = attribute;
    isFirst_ = isFirst;
    keySize_ = 0;
  }
  bool isFirst() const { return isFirst_; }

  NboAttrLog::Out & frame() { return *frame_; }
  Mirror & mirror() { return mirror_; }
  bool isFull() const { return frame_->size() >= frameSize; }

  void op( LogOp op ) { *frame_->room( 1 ) = static_cast< U8 >( op ); }
  /// Writes where the target is; an entity of another tree reads as null at the other end.
  void reference( Entity * target );
  /// The key of the member that is written next begins here, and has ended.
  void keyBegins() { keyBegin_ = frame_->size(); }
  void keyEnds() { keySize_ = frame_->size() - keyBegin_; }
  /// Writes the number and the incarnation of a child, which is attached from now on.
  void child( Entity & child );

  /// Calls write(), which writes one operation. What cannot be written, for a string in it is too
  /// long, is left out and counted.
  template< class Write >
  void whole( Write write ) {
    std::size_t const start = frame_->size();
    try {
      write();
      if( frame_->size() > frameSizeMost - headSize )
        throwRangeException( "attribute log: more than 67108864 bytes for one member" );
    } catch( RangeException const & refusal ) {
      frame_->cut( start );
      unwritable( refusal );
    }
  }

 private:
  void unwritable( RangeException const & refusal );

  Mirror & mirror_;
  KoiNboAttrLogSa * adapter_ = nullptr;  // none while an orphan's arguments are written
  unsigned attribute_ = 0;
  bool isFirst_ = false;
  std::size_t keyBegin_ = 0, keySize_ = 0;
  Ptr< NboAttrLog::Out > const frame_{ new NboAttrLog::Out };
};

}  // namespace Koi
