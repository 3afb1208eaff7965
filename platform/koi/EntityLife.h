// EntityLife.h: what outlives an entity or a reactor: that it is gone, and who is to do something
// about that. Used by weak pointers and Entity, on the entity's thread.
//
// L1  A WeakReference is in the list of one life or in none, and may end at any time.
// L2  None is called while an entity is taken apart: they are called when that is done, and all is
//     gone that went with it.
#pragma once

#include <koi/Ptr.h>

namespace Koi {

/// A place in a ring.
struct WeakLink {
  WeakLink() = default;
  WeakLink( WeakLink const & ) = delete;
  WeakLink & operator=( WeakLink const & ) = delete;

  bool isAlone() const { return after == this; }
  void leaveRing() {
    before->after = after;
    after->before = before;
    before = after = this;
  }

  WeakLink * before = this;
  WeakLink * after = this;
};

/// What is to be done for one weak attribute or member when its target goes. Ends with the
/// reference.
class KOI_PUBLIC WeakReference : private WeakLink {
 public:
  virtual ~WeakReference() { leaveRing(); }

 protected:
  WeakReference() = default;

 private:
  friend struct EntityLife;
  /// Called once. It may end this object; what it throws is dropped.
  virtual void targetIsGone() = 0;
};

/// What weak pointers hold of an entity.
struct KOI_PUBLIC EntityLife final : PtrInterface {
  explicit EntityLife( PtrInterface const * of ) : object( of ) {}

  /// Has it called when the entity is gone, after those that came before.
  void add( WeakReference & reference ) {
    WeakLink & link = reference;
    link.before = references_.before;
    link.after = &references_;
    link.before->after = references_.before = &link;
  }

  PtrInterface const * object;  ///< null when it is gone

 private:
  friend class Departure;
  void handleZeroRef() const override { delete this; }
  void callReferences();

  WeakLink references_;
  Ptr< EntityLife > next_;  // of a departure
};

/// Open while an entity is taken apart; one that opens meanwhile is a part of the outer one. At the
/// end of the outermost the weak references to all that went are called.
class Departure {
 public:
  /// `life` is null when nobody holds it weakly.
  explicit Departure( Ptr< EntityLife > const & life );
  ~Departure();
  Departure( Departure const & ) = delete;
  Departure & operator=( Departure const & ) = delete;

 private:
  [[gnu::tls_model( "initial-exec" )]] static constinit thread_local Departure * outermost_;

  Ptr< EntityLife > first_;
  EntityLife * last_ = nullptr;
};

}  // namespace Koi
