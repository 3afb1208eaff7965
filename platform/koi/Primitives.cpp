// Primitives.cpp: the type nodes of the primitives, so that reflection sees fields and arguments of
// any kind alike.
#include <koi/Registration.h>

#define KOI_PRIMITIVE( T )                                           \
  template class Koi::GenericValue< T >;                             \
  template T Koi::valueFromText< T >( Koi::String8::IteratorConst &, \
                                      Koi::String8::IteratorConst const & )
KOI_PRIMITIVE( Koi::U8 );
KOI_PRIMITIVE( Koi::U16 );
KOI_PRIMITIVE( Koi::U32 );
KOI_PRIMITIVE( Koi::U64 );
KOI_PRIMITIVE( Koi::I32 );
KOI_PRIMITIVE( bool );
KOI_PRIMITIVE( Koi::Seconds );
KOI_PRIMITIVE( Koi::String8 );
KOI_PRIMITIVE( Koi::Name );

namespace Koi {
namespace {

template< class T >
constexpr KoiType primitive( char const * name ) {
  return Reflection< T >::node( name );
}

}  // namespace

constinit KoiType const koiTypeU8 = primitive< U8 >( "Koi::U8" );
constinit KoiType const koiTypeU16 = primitive< U16 >( "Koi::U16" );
constinit KoiType const koiTypeU32 = primitive< U32 >( "Koi::U32" );
constinit KoiType const koiTypeU64 = primitive< U64 >( "Koi::U64" );
constinit KoiType const koiTypeI32 = primitive< I32 >( "Koi::I32" );
constinit KoiType const koiTypeBool = primitive< bool >( "Koi::Bool" );
constinit KoiType const koiTypeSeconds = primitive< Seconds >( "Koi::Seconds" );
constinit KoiType const koiTypeString8 = primitive< String8 >( "Koi::String8" );
constinit KoiType const koiTypeName = primitive< Name >( "Koi::Name" );

}  // namespace Koi

KOI_MODULE( Primitives,
            "Koi::U8\0Koi::U16\0Koi::U32\0Koi::U64\0Koi::I32\0Koi::Bool\0Koi::Seconds\0"
            "Koi::String8\0Koi::Name",
            &Koi::koiTypeU8, &Koi::koiTypeU16, &Koi::koiTypeU32, &Koi::koiTypeU64, &Koi::koiTypeI32,
            &Koi::koiTypeBool, &Koi::koiTypeSeconds, &Koi::koiTypeString8, &Koi::koiTypeName )
