// Observers.h: the list of an entity's observers, and the walk over it that a notification is. Used
// by Entity alone, on its thread.
//
//   A detached observer leaves a null behind while somebody walks, so that places stay what they
//   are; the last walk that ends closes the gaps.
#pragma once

#include <cstddef>
#include <vector>

#include <koi/Export.h>
#include <koi/Types.h>

namespace Koi {

class Entity;
class NotifieeBase;

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
    Walk( Observers & observers, Entity const & entity );
    ~Walk();
    Walk( Walk const & ) = delete;
    Walk & operator=( Walk const & ) = delete;

    /// The next one; null at the end. `depth` is that of the type which declares the callback: an
    /// observer of what the entity extends does not have it.
    NotifieeBase * next( unsigned depth );

   private:
    Observers & observers_;
    std::size_t const end_;
    std::size_t at_ = 0;
  };

 private:
  std::vector< NotifieeBase * > list_;
  U32 numWalks_ = 0;
  bool tooDeep_ = false;
};

}  // namespace Koi
