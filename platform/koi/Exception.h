// Exception.h: every refusal the library raises. Any thread of any program may catch them.
//
// The types are exported with their type information, so a catch by type works across the border of
// the shared library. what() is exactly the text that the raising function documents.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include <koi/Export.h>

namespace Koi {

struct KoiType;
struct GenericIfOp;

/// The base of all of them.
class KOI_PUBLIC Exception : public std::runtime_error {
 public:
  explicit Exception( std::string const & text ) : std::runtime_error( text ) {}
  ~Exception() override;
};

/// A value outside the range of its type.
class KOI_PUBLIC RangeException : public Exception {
 public:
  using Exception::Exception;
  ~RangeException() override;
};

/// A text or a log that does not hold what was asked for: malformed, or too short.
class KOI_PUBLIC ParseException : public Exception {
 public:
  using Exception::Exception;
  ~ParseException() override;
};

/// A name that is taken by an object with other constructor arguments.
class KOI_PUBLIC NameInUseException : public Exception {
 public:
  using Exception::Exception;
  ~NameInUseException() override;
};

/// A reflection operation that the type does not have.
class KOI_PUBLIC OpNotSupportedException : public Exception {
 public:
  using Exception::Exception;
  ~OpNotSupportedException() override;
};

/// The hash of a value whose type has none.
class KOI_PUBLIC UnhashableException : public Exception {
 public:
  using Exception::Exception;
  ~UnhashableException() override;
};

/// Constructor arguments of the wrong number or type.
class KOI_PUBLIC ArgumentException : public Exception {
 public:
  using Exception::Exception;
  ~ArgumentException() override;
};

/// A type name that nobody registered.
class KOI_PUBLIC UnknownTypeException : public Exception {
 public:
  using Exception::Exception;
  ~UnknownTypeException() override;
};

/// A change of an entity that is a read-only proxy.
class KOI_PUBLIC ReadOnlyException : public Exception {
 public:
  using Exception::Exception;
  ~ReadOnlyException() override;
};

/// Observers that change what they observe, again and again.
class KOI_PUBLIC NestingException : public Exception {
 public:
  using Exception::Exception;
  ~NestingException() override;
};

/// Raises RangeException with the text as it stands.
[[noreturn]] KOI_PUBLIC void throwRangeException( std::string_view text );

/// Raises RangeException "<value> > <most> not allowed", or "<value> < <least> or > <most> not
/// allowed" for signed ones: a number too wide for its field.
[[noreturn]] KOI_PUBLIC void throwWidthException( unsigned long long value,
                                                  unsigned long long least,
                                                  unsigned long long most );
[[noreturn]] KOI_PUBLIC void throwWidthException( long long value, long long least,
                                                  long long most );

/// Raises ParseException with the text as it stands.
[[noreturn]] KOI_PUBLIC void throwParseException( std::string_view text );

/// Raises the range exception again, "attribute '<fieldName>': " before its text.
[[noreturn]] KOI_PUBLIC void rethrowFromDeserializeAttr( RangeException const & refusal,
                                                         std::string_view fieldName );

namespace GenericIfImpl {

/// Raises OpNotSupportedException "operation <code> on attribute <n> is not supported".
[[noreturn]] KOI_PUBLIC void throwOpNotSupportedException( GenericIfOp const & op );

/// Raises UnhashableException "<type> is not hashable".
[[noreturn]] KOI_PUBLIC void throwUnhashableException( KoiType const * type );

}  // namespace GenericIfImpl

}  // namespace Koi
