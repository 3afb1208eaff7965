#include <koi/Exception.h>
#include <koi/KoiType.h>

namespace Koi {

Exception::~Exception() = default;
RangeException::~RangeException() = default;
ParseException::~ParseException() = default;
NameInUseException::~NameInUseException() = default;
OpNotSupportedException::~OpNotSupportedException() = default;
UnhashableException::~UnhashableException() = default;
ArgumentException::~ArgumentException() = default;
UnknownTypeException::~UnknownTypeException() = default;
ReadOnlyException::~ReadOnlyException() = default;
NestingException::~NestingException() = default;

void throwRangeException( std::string_view text ) { throw RangeException( std::string( text ) ); }

void throwWidthException( unsigned long long value, unsigned long long, unsigned long long most ) {
  throw RangeException( std::to_string( value ) + " > " + std::to_string( most ) + " not allowed" );
}

void throwWidthException( long long value, long long least, long long most ) {
  throw RangeException( std::to_string( value ) + " < " + std::to_string( least ) + " or > " +
                        std::to_string( most ) + " not allowed" );
}

void throwParseException( std::string_view text ) { throw ParseException( std::string( text ) ); }

void rethrowFromDeserializeAttr( RangeException const & refusal, std::string_view fieldName ) {
  throw RangeException( "attribute '" + std::string( fieldName ) + "': " + refusal.what() );
}

void GenericIfImpl::throwOpNotSupportedException( GenericIfOp const & op ) {
  std::string const on = op.attribute == GenericIfOp::noAttribute
                             ? ""
                             : " on attribute " + std::to_string( op.attribute );
  throw OpNotSupportedException( "operation " + std::to_string( op.code ) + on +
                                 " is not supported" );
}

void GenericIfImpl::throwUnhashableException( KoiType const * type ) {
  throw UnhashableException( std::string( type->name ) + " is not hashable" );
}

}  // namespace Koi
