// ValidPtr.h: a pointer that is known not to be null. What hands out objects that others build, by
// a constructor of their own or a virtual one, makes one of these of what it got.
#pragma once

#include <koi/Exception.h>
#include <koi/Ptr.h>

namespace Koi {

template< class T >
class ValidPtr {
 public:
  /// Raises RangeException "null ValidPtr".
  ValidPtr( Ptr< T > object ) : object_( std::move( object ) ) {
    if( !object_ )
      throwRangeException( "null ValidPtr" );
  }
  ValidPtr( T * object ) : ValidPtr( Ptr< T >( object ) ) {}

  Ptr< T > const & ptr() const { return object_; }
  operator Ptr< T > const &() const { return object_; }
  T * operator->() const { return object_.ptr(); }
  T & operator*() const { return *object_; }

 private:
  Ptr< T > object_;
};

}  // namespace Koi
