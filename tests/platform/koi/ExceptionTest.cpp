// ExceptionTest.cpp: what the library raises is caught by its type on this side of the library's
// border, and says exactly this. The texts are kept as they are: people and scripts match them.

#include <functional>

#include <gtest/gtest.h>

#include <koi/Exception.h>
#include <koi/GenericIf.h>
#include <koi/Text.h>

#include "contract/Shapes.h"

namespace {

template< class Wanted >
bool isA( std::exception_ptr const & raised ) {
  try {
    std::rethrow_exception( raised );
  } catch( Wanted const & ) {
    return true;
  } catch( ... ) {
    return false;
  }
}

struct Raised {
  char const * name;
  std::function< void() > raise;
  bool ( *isOfItsType )( std::exception_ptr const & );
  char const * text;
};
void PrintTo( Raised const & row, std::ostream * out ) { *out << row.name; }
class ARefusal : public testing::TestWithParam< Raised > {};

TEST_P( ARefusal, isCaughtByItsTypeAndSaysExactlyThis ) {
  try {
    GetParam().raise();
    FAIL();
  } catch( Koi::Exception const & e ) {
    EXPECT_STREQ( e.what(), GetParam().text );
    auto const raised = std::current_exception();
    EXPECT_TRUE( GetParam().isOfItsType( raised ) );
    // Of that type, and of no other.
    EXPECT_EQ( isA< Koi::RangeException >( raised ) + isA< Koi::ParseException >( raised ) +
                   isA< Koi::NameInUseException >( raised ) +
                   isA< Koi::OpNotSupportedException >( raised ) +
                   isA< Koi::UnhashableException >( raised ) +
                   isA< Koi::ArgumentException >( raised ) +
                   isA< Koi::UnknownTypeException >( raised ),
               1 );
  }
}

using namespace Koi;
INSTANTIATE_TEST_SUITE_P(
    OfTheRuntime, ARefusal,
    testing::Values(
        Raised{ "range", [] { throwRangeException( "VlanId::value < 1 or > 4094 not allowed" ); },
                isA< RangeException >, "VlanId::value < 1 or > 4094 not allowed" },
        Raised{ "width", [] { throwWidthException( 70000ull, 0ull, 65535ull ); },
                isA< RangeException >, "70000 > 65535 not allowed" },
        Raised{ "signedWidth", [] { throwWidthException( -300ll, -128ll, 127ll ); },
                isA< RangeException >, "-300 < -128 or > 127 not allowed" },
        Raised{ "parse", [] { throwParseException( "'eth' is no interface" ); },
                isA< ParseException >, "'eth' is no interface" },
        Raised{ "field",
                [] {
                  rethrowFromDeserializeAttr( RangeException( "VlanId::value > 1 not allowed" ),
                                              "outerVid" );
                },
                isA< RangeException >, "attribute 'outerVid': VlanId::value > 1 not allowed" },
        Raised{ "operation",
                [] {
                  GenericIfImpl::throwOpNotSupportedException( { GenericIfOp::noAttribute, 3 } );
                },
                isA< OpNotSupportedException >, "operation 3 is not supported" },
        Raised{ "attributeOperation",
                [] {
                  GenericIfImpl::throwOpNotSupportedException( { 2, GenericIfOp::equal } );
                },
                isA< OpNotSupportedException >, "operation 9 on attribute 2 is not supported" },
        Raised{ "unhashable",
                [] { GenericIfImpl::throwUnhashableException( &Shapes::Plain::_koiType ); },
                isA< UnhashableException >, "Shapes::Plain is not hashable" },
        Raised{ "unknownType", [] { typeNode( "" ); }, isA< UnknownTypeException >,
                "type '' is not registered" },
        Raised{ "argument", [] { koiTypeU8.genericIfFromCtorArgs( &koiTypeU8, {}, nullptr ); },
                isA< ArgumentException >, "Koi::U8 takes 1 arguments, not 0" },
        Raised{ "literal",
                [] {
                  char const * it = "None";
                  needString( it, it + 4, "Value('" );
                },
                isA< ParseException >, "'Value('' was expected at 'None'" } ),
    []( auto const & row ) { return row.param.name; } );

}  // namespace
