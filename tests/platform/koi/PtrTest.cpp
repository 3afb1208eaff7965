#include <bit>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include <koi/Ptr.h>
#include <koi/String8.h>

using Koi::Ptr;
using Koi::RefWord;

namespace {

struct Base : Koi::PtrInterface {
  explicit Base( int & numDeleted ) : numDeleted_( numDeleted ) {}
  void flagIs( Koi::U32 which, bool on ) { koiFlagIs( which, on ); }
  bool flag( Koi::U32 which ) const { return koiFlag( which ); }

 protected:
  virtual ~Base() = default;
  void handleZeroRef() const override {
    ++numDeleted_;
    delete this;
  }

 private:
  int & numDeleted_;
};
struct Derived final : Base {
  using Base::Base;
};

TEST( Ptr, keepsTheObjectUntilTheLastOneGoes ) {
  int numDeleted = 0;
  {
    Ptr< Derived > first = new Derived( numDeleted );
    Ptr< Base > base = first;
    Ptr< Base const > constant = base;
    EXPECT_EQ( first->koiRefCount(), 3u );
    EXPECT_TRUE( base == first );
    first = nullptr;
    base = *&base;
    Ptr< Base > moved( std::move( base ) );
    EXPECT_EQ( base, nullptr );
    EXPECT_EQ( constant->koiRefCount(), 2u );
    // From a plain pointer, and inside a call that holds none.
    Base * plain = moved;
    Ptr< Base > again = plain;
    EXPECT_EQ( again->koiRefCount(), 3u );
    EXPECT_EQ( numDeleted, 0 );
  }
  EXPECT_EQ( numDeleted, 1 );
}

TEST( Ptr, takingOverMayDeleteWhatHeldTheOther ) {
  struct Link final : Koi::PtrInterface {
    Ptr< Link > next;
    void handleZeroRef() const override { delete this; }
  };
  Ptr< Link > head = new Link;
  head->next = new Link;
  head = head->next;
  EXPECT_EQ( head->koiRefCount(), 1u );
}

TEST( Ptr, flagsStandBesideTheCount ) {
  for( bool atomic : { false, true } ) {
    Koi::threadSafePtrIs( atomic );
    int numDeleted = 0;
    Ptr< Derived > object = new Derived( numDeleted );
    object->flagIs( RefWord::zombie, true );
    object->flagIs( RefWord::notificationActive, true );
    EXPECT_EQ( object->koiRefCount(), 1u );
    object->flagIs( RefWord::zombie, false );
    EXPECT_FALSE( object->flag( RefWord::zombie ) );
    EXPECT_TRUE( object->flag( RefWord::notificationActive ) );
    object = nullptr;
    EXPECT_EQ( numDeleted, 1 ) << "a flag does not keep an object";
  }
  Koi::threadSafePtrIs( false );
}

TEST( RefWord, aCountThatWouldReachTheFlagsEndsTheProcess ) {
  auto word = std::bit_cast< RefWord >( RefWord::countMost - 1 );
  word.add();
  EXPECT_EQ( word.count(), 0x1fffffffu );
  EXPECT_DEATH( word.add(), "assertion failed: .*countMost" );
  RefWord none;
  EXPECT_DEATH( none.drop(), "assertion failed: .*countMask" );
}

TEST( Ptr, countsStayRightWhenThreadsShareAnObject ) {
  Koi::threadSafePtrIs( true );
  int numDeleted = 0;
  {
    Ptr< Derived > object = new Derived( numDeleted );
    Koi::String8 const text( "shared by all" );
    std::vector< std::thread > threads;
    for( int i = 0; i < 4; ++i )
      threads.emplace_back( [&, object] {
        for( int n = 0; n < 20000; ++n ) {
          Ptr< Base > base = object;
          Koi::String8 copy = text;
          if( n % 16 == 0 )
            base->flagIs( RefWord::notificationActive, n % 32 == 0 );
          if( copy.size() != 13 )
            std::abort();
        }
      } );
    for( auto & thread : threads )
      thread.join();
    threads.clear();
    EXPECT_EQ( object->koiRefCount(), 1u );
    EXPECT_EQ( numDeleted, 0 );
  }
  EXPECT_EQ( numDeleted, 1 );
  Koi::threadSafePtrIs( false );
}

}  // namespace
