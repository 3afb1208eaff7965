// AdapterTable.h: the adapters of one attribute log, by the numbers under which the two ends speak
// of entities, and by what is to be done with them. Belongs to a Mirror; one thread.
//
// Each end gives numbers from a series of its own, so one entity may have several: the two ends
// made it at the same time. An end speaks by the number that the peer gave last, which the peer
// knows for certain, and hears all of them. Number 1 is the root.
#pragma once

#include <unordered_map>

#include <koi/KoiNboAttrLogSa.h>

namespace Koi {

class AdapterTable {
 public:
  static constexpr U64 rootNumber = 1;

  /// `firstNumber` begins the series of this end; every second number is its own.
  explicit AdapterTable( U64 firstNumber ) : firstNumber_( firstNumber ), next_( firstNumber ) {}
  ~AdapterTable() { detachAll(); }
  AdapterTable( AdapterTable const & ) = delete;
  AdapterTable & operator=( AdapterTable const & ) = delete;

  AdapterList< AllAdapters > all;
  AdapterList< DirtyAdapters > dirty;
  AdapterList< SentAdapters > sent;
  AdapterList< WaitingAdapters > waiting;

  /// Null: that entity is gone, or never was.
  KoiNboAttrLogSa * find( U64 number ) const {
    auto const at = byNumber_.find( number );
    return at == byNumber_.end() ? nullptr : at->second;
  }
  /// The number that the adapter speaks by; it gets one when it has none.
  U64 numberOf( KoiNboAttrLogSa & adapter ) {
    if( adapter.number == 0 ) {
      adapter.number = next_;
      next_ += 2;
      byNumber_[adapter.number] = &adapter;
    }
    return adapter.number;
  }
  /// The number is of this end's series: where find() does not know it, the entity is gone.
  bool isOurs( U64 number ) const { return number != rootNumber && number % 2 == firstNumber_ % 2; }
  /// The peer speaks of it by that number.
  void peerNumberIs( KoiNboAttrLogSa & adapter, U64 number ) {
    if( adapter.number == number )
      return;
    if( adapter.number != 0 )
      otherNumbers_.emplace( &adapter, adapter.number );
    adapter.number = number;
    byNumber_[number] = &adapter;
  }
  /// The peer may speak of it by that number, too, until it hears of it by ours.
  void otherNumberIs( KoiNboAttrLogSa & adapter, U64 number ) {
    numberOf( adapter );
    if( byNumber_.emplace( number, &adapter ).second )
      otherNumbers_.emplace( &adapter, number );
  }
  /// The adapter goes.
  void forget( KoiNboAttrLogSa const & adapter ) {
    forget( adapter, adapter.number );
    auto const [first, last] = otherNumbers_.equal_range( &adapter );
    for( auto at = first; at != last; ++at )
      forget( adapter, at->second );
    otherNumbers_.erase( first, last );
  }
  /// A connection ended: nobody has a number.
  void forgetNumbers() {
    byNumber_.clear();
    otherNumbers_.clear();
    next_ = firstNumber_;
  }
  /// Takes every adapter from its entity.
  void detachAll();

 private:
  // A peer that breaks the rules may have given the number to another one since.
  void forget( KoiNboAttrLogSa const & adapter, U64 number ) {
    auto const at = byNumber_.find( number );
    if( at != byNumber_.end() && at->second == &adapter )
      byNumber_.erase( at );
  }

  std::unordered_map< U64, KoiNboAttrLogSa * > byNumber_;
  std::unordered_multimap< KoiNboAttrLogSa const *, U64 > otherNumbers_;  // heard, not spoken
  U64 const firstNumber_;
  U64 next_;
};

}  // namespace Koi
