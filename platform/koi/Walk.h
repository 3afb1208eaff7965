// Walk.h: the iterators of a keyed collection. They survive whatever happens to it while it lives.
//
// An iterator knows its member by key, hash and time of creation. Where the structure is another
// than when it looked last, it looks its place up again. So every member that is there throughout a
// walk is visited once, and none is visited that was removed.
#pragma once

#include <cstddef>

#include <koi/Members.h>

namespace Koi {

/// Of is a Members.
template< class Of >
class Walk {
  using Node = typename Of::Node;
  using Cursor = typename Of::Cursor;

 public:
  using Key = typename Node::Key;
  using Given = typename Of::Given;

  /// At the end.
  Walk() = default;
  Walk( Of const & members, Cursor at ) : members_( &members ) { moveTo( at ); }

  /// At a member, even if it went since.
  explicit operator bool() const { return members_ != nullptr; }

  /// The key, also when the member went.
  Key const & key() const { return key_; }

  /// The member's value now; the default, or null, when it went. What refers to it is good until
  /// the collection changes.
  decltype( auto ) value() const { return members_->given( slotNow() ); }

  void advance() {
    auto const & order = members_->order();
    moveTo( version_ == members_->version() ? order.next( at_ )
                                            : order.behind( key_, hash_, created_ ) );
  }

  friend bool operator==( Walk const & a, Walk const & b ) {
    return a.members_ == b.members_ &&
           ( !a.members_ || ( a.created_ == b.created_ && a.key_ == b.key_ ) );
  }

 private:
  Node const & node( U32 slot ) const { return members_->node( slot ); }

  U32 slotNow() const {
    if( version_ == members_->version() )
      return members_->order().slotAt( at_ );
    U32 const slot = members_->find( key_ );
    if( slot != noSlot && members_->created( slot ) == created_ ) {  // still the same one
      at_ = members_->order().cursorAt( slot );
      version_ = members_->version();
    }
    return slot;
  }

  void moveTo( Cursor at ) {
    if( at == members_->order().end() ) {
      members_ = nullptr;
      return;
    }
    U32 const slot = members_->order().slotAt( at );
    Node const & there = node( slot );
    at_ = at;
    version_ = members_->version();
    key_ = there.key;
    hash_ = there.hash;
    created_ = members_->created( slot );
  }

  Of const * members_ = nullptr;
  mutable Cursor at_{};
  mutable U64 version_ = 0;
  U64 created_ = 0;
  U32 hash_ = 0;
  Key key_{};
};

/// What range-for and loops need besides; Self is the iterator itself.
template< class Self, class Of >
class WalkOf : public Walk< Of > {
 public:
  using value_type = Self;
  using difference_type = std::ptrdiff_t;
  using Walk< Of >::Walk;

  explicit WalkOf( Walk< Of > const & at ) : Walk< Of >( at ) {}
  Self const & operator*() const { return static_cast< Self const & >( *this ); }
  Self & operator++() {
    this->advance();
    return static_cast< Self & >( *this );
  }
};

}  // namespace Koi
