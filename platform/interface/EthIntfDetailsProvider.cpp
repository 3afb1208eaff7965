#include <interface/EthIntfDetailsProvider.h>

#include <map>

#include <koi/Assert.h>
#include <koi/Exception.h>
#include <ntrace/Ntrace.h>
#include <wirex/EthIntfId.h>

namespace EthIntf {
namespace {

/// Those that were loaded and not asked for yet, the last one first.
constinit DetailsRegistration const * loaded = nullptr;

DetailsRegistration const ethPorts( []() -> Koi::Ptr< EthIntfDetailsProvider > {
  return new EthPortDetailsProvider;
} );

}  // namespace

class Registry {
 public:
  using Providers = std::map< Koi::String8, Koi::Ptr< EthIntfDetailsProvider > >;

  /// With all that were loaded by now.
  static Providers & providers() {
    // Never destroyed: who asks may be destroyed when the program ends.
    static auto & all = *new Providers;
    for( auto const * at = std::exchange( loaded, nullptr ); at; at = at->next_ ) {
      auto const provider = at->make_();
      all.emplace( provider->statusTypeName(), provider );
    }
    return all;
  }
};

DetailsRegistration::DetailsRegistration( Make make )
    : make_( make ), next_( std::exchange( loaded, this ) ) {}

Koi::Ptr< EthIntfDetailsProvider > detailsProvider( Koi::String8 const & statusTypeName ) {
  auto const & all = Registry::providers();
  auto const at = all.find( statusTypeName );
  return at == all.end() ? nullptr : at->second;
}

Koi::Ptr< EthIntfDetailsProvider > detailsProvider( EthIntfStatus const & status ) {
  return detailsProvider( Koi::String8( status.koiType()->name ) );
}

void detailsProviderIs( Koi::Ptr< EthIntfDetailsProvider > const & provider ) {
  if( !provider )
    Koi::throwRangeException( "null details provider not allowed" );
  Registry::providers()[provider->statusTypeName()] = provider;
}

// ---- Ethernet ports

bool hasNumber( Koi::U32 module, Koi::U32 port, Koi::U32 lane ) {
  return module <= 30 && lane <= 40 && port != 0 && port <= ( lane ? 204u : 8191u );
}

Koi::U32 numberOfPlace( Koi::U32 module, Koi::U32 port, Koi::U32 lane ) {
  KOI_ASSERT( module <= 30 );
  KOI_ASSERT( lane <= 40 );
  KOI_ASSERT( port );
  if( lane ) {
    KOI_ASSERT( port <= 204 );
    return module << 13 | ( lane + ( port * 5 - 5 ) * 8 );
  }
  KOI_ASSERT( port <= 8191 );
  return module << 13 | port;
}

Koi::String8 EthPortDetailsProvider::statusTypeName() const {
  return Koi::String8( EthIntfStatus::koiName );
}

double EthPortDetailsProvider::speed( EthIntfStatus const & status ) const {
  return static_cast< double >( status.speed() );
}

Koi::I32 EthPortDetailsProvider::intfIndex( EthIntfStatus const & status ) const {
  using Wirex::EthIntfId;
  Wirex::IntfId const intfId = status.intfId();
  if( status.koiType() != &EthIntfStatus::_koiType || !EthIntfId::isEthIntfId( intfId ) ||
      EthIntfId::subIntf( intfId ) != 0 )
    return -1;
  Koi::U32 const module = EthIntfId::module( intfId ), port = EthIntfId::port( intfId ),
                 lane = EthIntfId::lane( intfId );
  return hasNumber( module, port, lane ) ? indexOf( numberOfPlace( module, port, lane ) ) : -1;
}

}  // namespace EthIntf
