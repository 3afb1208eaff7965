// Ptr.h: reference counts and the pointers that keep them. The one home of atomics on counts.
//
// An object is used on one thread. Only its count may be touched from several, and only after
// threadSafePtrIs( true ), which a process calls before it starts its second thread.
#pragma once

#include <atomic>
#include <cstddef>
#include <type_traits>
#include <utility>

#include <koi/Assert.h>
#include <koi/Export.h>
#include <koi/Types.h>

namespace Koi {

/// Whether counts change atomically; false until a process says otherwise.
KOI_PUBLIC extern bool threadSafePtr;

/// Makes every count change atomic. Call it while the process has one thread.
inline void threadSafePtrIs( bool atomic ) { threadSafePtr = atomic; }

/// A count with two flags in one word: bits 0 to 28 count, bit 29 says that notifications are
/// active, bit 31 marks a zombie. Bit 30 stays 0: the count is refused before it reaches bit 29.
class RefWord {
 public:
  static constexpr U32 notificationActive = 1u << 29;
  static constexpr U32 zombie = 1u << 31;
  static constexpr U32 countMask = 0x5fffffff;
  static constexpr U32 countMost = ( 1u << 29 ) - 1;

  U32 count() const { return load() & countMask; }
  void add() { KOI_ASSERT( ( changed( 1 ) & countMost ) != countMost ); }
  /// True when that was the last reference.
  bool drop() {
    U32 const before = changed( ~0u );
    KOI_ASSERT( ( before & countMask ) != 0 );
    return ( before & countMask ) == 1;
  }
  bool flag( U32 which ) const { return ( load() & which ) != 0; }
  void flagIs( U32 which, bool on ) {
    if( threadSafePtr ) {
      std::atomic_ref< U32 > word( word_ );
      if( on )
        word.fetch_or( which );
      else
        word.fetch_and( ~which );
    } else {
      word_ = on ? word_ | which : word_ & ~which;
    }
  }

 private:
  /// The word as it was before the step.
  U32 changed( U32 step ) {
    if( threadSafePtr )
      return std::atomic_ref< U32 >( word_ ).fetch_add( step, std::memory_order_acq_rel );
    U32 const before = word_;
    word_ = before + step;
    return before;
  }
  U32 load() const {
    return threadSafePtr ? std::atomic_ref< U32 >( word_ ).load( std::memory_order_acquire )
                         : word_;
  }

  mutable U32 word_ = 0;
};

/// A sum that changes in steps up and down, as exact as a count when several threads change it.
class Tally {
 public:
  void add( U64 step ) { change( step ); }
  void subtract( U64 step ) { change( ~step + 1 ); }
  U64 value() const {
    return threadSafePtr ? std::atomic_ref< U64 >( sum_ ).load( std::memory_order_relaxed ) : sum_;
  }

 private:
  void change( U64 step ) {
    if( threadSafePtr )
      std::atomic_ref< U64 >( sum_ ).fetch_add( step, std::memory_order_relaxed );
    else
      sum_ += step;
  }

  alignas( std::atomic_ref< U64 >::required_alignment ) mutable U64 sum_ = 0;
};

class AllocTrack;

/// The base of everything that a Ptr points to. An object starts with no reference; when the last
/// one goes, handleZeroRef() decides what becomes of it.
class KOI_PUBLIC PtrInterface {
 public:
  PtrInterface( PtrInterface const & ) = delete;
  PtrInterface & operator=( PtrInterface const & ) = delete;

  U32 koiRefCount() const { return refs_.count(); }
  void koiRefAdd() const { refs_.add(); }
  void koiRefDrop() const {
    if( refs_.drop() )
      handleZeroRef();
  }

  /// The runtime's allocator: memory for one object of `size` bytes, counted under its type; from
  /// 1024 bytes on it begins with a cache line. Raises std::bad_alloc, and then nothing is counted.
  static void * koiMemAlloc( std::size_t size, AllocTrack & track );
  /// Gives it back; `size` as it was asked for. Null is not counted.
  static void koiMemFree( void * memory, std::size_t size, AllocTrack & track ) noexcept;

 protected:
  PtrInterface() = default;
  ~PtrInterface() = default;

  /// The last reference went. Called once more if the object gains and loses another.
  virtual void handleZeroRef() const = 0;

  bool koiFlag( U32 which ) const { return refs_.flag( which ); }
  void koiFlagIs( U32 which, bool on ) { refs_.flagIs( which, on ); }

 private:
  mutable RefWord refs_;
};

/// A pointer that keeps what it points to alive. Converts from and to the plain pointer, so it may
/// be made from `this`, also inside a constructor as long as somebody holds a reference there.
template< class T >
class Ptr {
 public:
  constexpr Ptr() = default;
  constexpr Ptr( std::nullptr_t ) {}
  Ptr( T * object ) : object_( object ) { add(); }
  Ptr( Ptr const & other ) : object_( other.object_ ) { add(); }
  Ptr( Ptr && other ) noexcept : object_( std::exchange( other.object_, nullptr ) ) {}
  template< class U >
  requires std::is_convertible_v< U *, T * > Ptr( Ptr< U > const & other )
      : object_( other.ptr() ) {
    add();
  }
  ~Ptr() { drop(); }
  Ptr & operator=( Ptr other ) noexcept {
    std::swap( object_, other.object_ );
    return *this;
  }

  T * ptr() const { return object_; }
  operator T *() const { return object_; }
  T * operator->() const { return object_; }
  T & operator*() const { return *object_; }

 private:
  void add() {
    if( object_ )
      object_->koiRefAdd();
  }
  void drop() {
    if( object_ )
      object_->koiRefDrop();
  }

  T * object_ = nullptr;
};

}  // namespace Koi
