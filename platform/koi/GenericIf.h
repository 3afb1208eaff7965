// GenericIf.h: a value whose type is known only at run time. What the command line, bindings and
// tests hold instead of a typed value. Counted; one thread, as Ptr.h says.
#pragma once

#include <koi/KoiType.h>
#include <koi/Types.h>

namespace Koi {

/// A wrapped value that never changes. The virtual operations stand in slot order.
class KOI_PUBLIC GenericIf : public PtrInterface {
 public:
  virtual ~GenericIf();
  /// The type node of the value.
  virtual KoiType const * type() const = 0;
  /// The raw value when it is of that type, null otherwise.
  virtual void const * voidPtrIs( KoiType const * type ) const = 0;
  /// The value's hash(). Raises UnhashableException "<type> is not hashable".
  virtual U32 hash() const = 0;
  /// The canonical text.
  virtual String8 strRep() const = 0;

 private:
  void handleZeroRef() const final { delete this; }
};

/// The wrapper of one type. Its bodies are in the library that registers the type.
template< class T >
class KOI_PUBLIC GenericValue final : public GenericIf {
 public:
  explicit GenericValue( T const & value );
  ~GenericValue() override;
  KoiType const * type() const override;
  void const * voidPtrIs( KoiType const * type ) const override;
  U32 hash() const override;
  String8 strRep() const override;

 private:
  T value_;
};

}  // namespace Koi
