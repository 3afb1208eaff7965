// EthIntfPortId.h: written by koigen from EthIntfPortId.koi. Change that file, not this one.
#pragma once

#include <koi/Value.h>
#include <koi/Entity.h>
#include <wirex/IntfId.h>

namespace Interface {

/// A small number that no other interface of the switch has; 0: none.
class KOI_PUBLIC EthPortId : public Koi::Wrapped< EthPortId, Koi::U16 > {
 public:
  using Wrapped::Wrapped;

  /// none
  static constexpr Koi::U16 min() { return 0; }

  /// the highest one
  static constexpr Koi::U16 max() { return 4094; }

  static constexpr char koiName[] = "Interface::EthPortId";
  static constexpr char koiField[] = "value";
  static constexpr Koi::Range< Koi::U16 > koiRange{
      0, 4094, "EthPortId::value < EthPortId::min or > EthPortId::max not allowed" };
  static Koi::KoiType const _koiType;
};

/// The numbers of all interfaces.
class KOI_PUBLIC EthIntfPortIdDir : public Koi::EntityOf< EthIntfPortIdDir > {
 public:
  explicit EthIntfPortIdDir( Koi::Name const & name );

  class KoiPortId;
  /// by interface
  EthPortId portId( Wirex::IntfId const & k ) const;
  Koi::HashMap< KoiPortId, Wirex::IntfId, EthPortId > const & portId() const { return portId_; }
  using PortIdIterator = Koi::HashMap< KoiPortId, Wirex::IntfId, EthPortId >::Iterator;
  PortIdIterator portIdIterator();
  void portIdIs( Wirex::IntfId const & k, EthPortId const & v );
  EthPortId portIdDel( Wirex::IntfId const & k );
  EthPortId portIdDel( PortIdIterator const & i );
  void portIdDelAll();
  void portIdNotify( Wirex::IntfId const & k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< EthIntfPortIdDir > {
   public:
    virtual void onPortId() {}
    virtual void onPortId( Wirex::IntfId const & ) {}
    virtual void onPortIdKoiImmediate( Wirex::IntfId const & k ) {
      koiPass( koiOnPortId ); onPortId( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Wirex::IntfId const & > koiOnPortId{
      koiFirst + 0, &NotifieeConst::onPortId, &NotifieeConst::onPortIdKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, EthIntfPortIdDir >;

  static constexpr char koiName[] = "Interface::EthIntfPortIdDir";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &EthIntfPortIdDir::name )
    };
  }
  template< class Self = EthIntfPortIdDir >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "portId", &Self::portId_, &Self::portIdIs, &Self::portIdDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 1;
  static Koi::KoiType const _koiType;

 private:
  Koi::HashMap< KoiPortId, Wirex::IntfId, EthPortId > portId_;
};

/// A new EthIntfPortIdDir without a parent.
KOI_PUBLIC Koi::Ptr< EthIntfPortIdDir > ethIntfPortIdDirFactory( Koi::Name const & name );

}  // namespace Interface

// Reflection wrappers: each holds one copy of a value.
namespace _koi_Interface_EthPortId { using GenericIf_ = Koi::GenericValue< Interface::EthPortId >; }
