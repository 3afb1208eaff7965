// EthIntfDetailsProvider.h: what an interface table says of an interface (its type, its speed, its
// index), by the type of its status; and the registry of who says it.
//
// A process has one registry. Used on one thread, that of the agent.
#pragma once

#include <Interface/EthIntf.h>

namespace EthIntf {

using Interface::EthIntfStatus;

/// Says it of all interfaces of one type of status.
class KOI_PUBLIC EthIntfDetailsProvider : public Koi::PtrInterface {
 public:
  /// The type of the status, as it is registered: "Interface::EthIntfStatus".
  virtual Koi::String8 statusTypeName() const = 0;
  /// The number that IANA gave the type of interface (ifType).
  virtual Koi::U32 intfType( EthIntfStatus const & status ) const = 0;
  /// In bits a second; 0: it has none of its own.
  virtual double speed( EthIntfStatus const & status ) const = 0;
  /// Whether there is something to plug a cable into (ifConnectorPresent).
  virtual bool connectorPresent( EthIntfStatus const & status ) const = 0;
  /// The interface's number in interface tables (ifIndex): no two interfaces have the same one. -1
  /// when there is none for it: it is of another type, or its place is beyond what the number
  /// holds.
  virtual Koi::I32 intfIndex( EthIntfStatus const & status ) const = 0;

  /// What is added to every index. A sum that does not fit wraps.
  Koi::I32 baseIndex() const { return baseIndex_; }
  void baseIndexIs( Koi::I32 baseIndex ) { baseIndex_ = baseIndex; }

 protected:
  explicit EthIntfDetailsProvider( Koi::I32 baseIndex ) : baseIndex_( baseIndex ) {}
  virtual ~EthIntfDetailsProvider() = default;
  /// The index of what has that number within the base.
  Koi::I32 indexOf( Koi::U32 number ) const {
    return static_cast< Koi::I32 >( number + static_cast< Koi::U32 >( baseIndex_ ) );
  }

 private:
  void handleZeroRef() const override { delete this; }

  Koi::I32 baseIndex_;
};

/// Of Ethernet ports.
class KOI_PUBLIC EthPortDetailsProvider : public EthIntfDetailsProvider {
 public:
  explicit EthPortDetailsProvider( Koi::I32 baseIndex = 0 ) : EthIntfDetailsProvider( baseIndex ) {}
  Koi::String8 statusTypeName() const override;
  Koi::U32 intfType( EthIntfStatus const & ) const override { return 6; }  // ethernetCsmacd
  /// That of the status.
  double speed( EthIntfStatus const & status ) const override;
  bool connectorPresent( EthIntfStatus const & ) const override { return true; }
  /// numberOfPlace(), and the base.
  Koi::I32 intfIndex( EthIntfStatus const & status ) const override;
};

/// Whether that place of an Ethernet port has a number: a module of at most 30, a lane of at most
/// 40, and a port that is not 0 and at most 204 where there is a lane, else 8191.
KOI_PUBLIC bool hasNumber( Koi::U32 module, Koi::U32 port, Koi::U32 lane );
/// That number, of 18 bits: bits 17 to 13 are the module, bits 12 to 0 the port, or, where there is
/// a lane, ( port - 1 ) * 40 + lane. Asserts what hasNumber() asks.
KOI_PUBLIC Koi::U32 numberOfPlace( Koi::U32 module, Koi::U32 port, Koi::U32 lane );

// ---- the registry

/// The provider of that type of status; null when there is none.
KOI_PUBLIC Koi::Ptr< EthIntfDetailsProvider > detailsProvider(
    Koi::String8 const & statusTypeName );
/// That of the status's own type.
KOI_PUBLIC Koi::Ptr< EthIntfDetailsProvider > detailsProvider( EthIntfStatus const & status );
/// The provider of its type of status from now on, in place of who was: so an agent says another
/// base index. Raises RangeException "null details provider not allowed".
KOI_PUBLIC void detailsProviderIs( Koi::Ptr< EthIntfDetailsProvider > const & provider );

/// A static object that stands beside a provider's source. Loading notes where it is; the provider
/// is made when somebody first asks the registry.
class KOI_PUBLIC DetailsRegistration {
 public:
  using Make = Koi::Ptr< EthIntfDetailsProvider > ( * )();

  explicit DetailsRegistration( Make make );
  DetailsRegistration( DetailsRegistration const & ) = delete;
  DetailsRegistration & operator=( DetailsRegistration const & ) = delete;

 private:
  friend class Registry;

  Make const make_;
  DetailsRegistration const * const next_;
};

}  // namespace EthIntf
