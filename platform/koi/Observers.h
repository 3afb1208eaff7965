// Observers.h: the list of an entity's observers, and the walk over it that a notification is. Used
// by Entity alone, on its thread.
//
//   A detached observer leaves a null behind while somebody walks, so that places stay what they
//   are; the last walk that ends closes the gaps.
#pragma once

#include <cstddef>
#include <vector>

#include <koi/Notifiee.h>

namespace Koi {

class KOI_PUBLIC Observers {
 public:
  /// So deep may the notifications of one entity nest.
  static constexpr U32 nestingMost = 1000;

  ~Observers();
  bool empty() const { return list_.empty(); }
  void add( NotifieeBase * observer ) { list_.push_back( observer ); }
  void remove( NotifieeBase * observer );

  /// One notification: the observers that are attached when it begins, but for those that are
  /// detached or switched off before their turn.
  class Walk {
   public:
    /// Raises NestingException "notifications nested more than 1000 deep at <full name>"; so do all
    /// further ones until the outermost walk of the entity has ended.
    Walk( Observers & observers, Entity const & entity )
        : observers_( observers ), end_( observers.list_.size() ) {
      if( observers_.numWalks_ >= observers_.most_ )
        observers_.refuse( entity );
      ++observers_.numWalks_;
    }
    ~Walk() {
      if( --observers_.numWalks_ == 0 && observers_.isUntidy_ )
        observers_.tidy();
    }
    Walk( Walk const & ) = delete;
    Walk & operator=( Walk const & ) = delete;

    /// The next one; null at the end. `depth` is that of the type which declares the callback: an
    /// observer of what the entity extends does not have it. One of those that `passed` names has.
    NotifieeBase * next( unsigned depth, U64 passed = 0 ) {
      while( at_ != end_ ) {
        NotifieeBase * const observer = observers_.list_[at_++];
        if( !observer ) [[unlikely]]
          continue;
        if( ( observer->passed_ & passed ) != 0 ) [[likely]]
          return observer;
        if( observer->hears( depth ) )
          return observer;
      }
      return nullptr;
    }

   private:
    Observers & observers_;
    std::size_t const end_;
    std::size_t at_ = 0;
  };

 private:
  [[noreturn]] void refuse( Entity const & entity );
  void tidy();

  std::vector< NotifieeBase * > list_;
  U32 numWalks_ = 0;
  U32 most_ = nestingMost;  // 0 once that was reached, until the outermost walk has ended
  bool isUntidy_ = false;   // there is something to do when that has
};

}  // namespace Koi
