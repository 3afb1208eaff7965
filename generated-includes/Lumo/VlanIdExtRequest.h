// VlanIdExtRequest.h: written by koigen from VlanIdExtRequest.koi. Change that file, not this one.
#pragma once

#include <koi/Value.h>
#include <koi/Entity.h>
#include <Lumo/VlanId.h>
#include <wirex/IntfId.h>

namespace LumoExt {

/// The interfaces that want a VLAN. The component that asks writes it.
class KOI_PUBLIC RequestReservedVlanId : public Koi::EntityOf< RequestReservedVlanId > {
 public:
  explicit RequestReservedVlanId( Koi::Name const & name );

  class KoiRequest;
  /// an entry each
  bool request( Wirex::IntfId const & k ) const;
  Koi::HashMap< KoiRequest, Wirex::IntfId, bool > const & request() const { return request_; }
  using RequestIterator = Koi::HashMap< KoiRequest, Wirex::IntfId, bool >::Iterator;
  RequestIterator requestIterator();
  void requestIs( Wirex::IntfId const & k, bool v );
  bool requestDel( Wirex::IntfId const & k );
  bool requestDel( RequestIterator const & i );
  void requestDelAll();
  void requestNotify( Wirex::IntfId const & k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< RequestReservedVlanId > {
   public:
    virtual void onRequest() {}
    virtual void onRequest( Wirex::IntfId const & ) {}
    virtual void onRequestKoiImmediate( Wirex::IntfId const & k ) {
      koiPass( koiOnRequest ); onRequest( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Wirex::IntfId const & > koiOnRequest{
      koiFirst + 0, &NotifieeConst::onRequest, &NotifieeConst::onRequestKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, RequestReservedVlanId >;

  static constexpr char koiName[] = "LumoExt::RequestReservedVlanId";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &RequestReservedVlanId::name )
    };
  }
  template< class Self = RequestReservedVlanId >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "request", &Self::request_, &Self::requestIs, &Self::requestDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 1;
  static Koi::KoiType const _koiType;

 private:
  Koi::HashMap< KoiRequest, Wirex::IntfId, bool > request_;
};

/// A new RequestReservedVlanId without a parent.
KOI_PUBLIC Koi::Ptr< RequestReservedVlanId > requestReservedVlanIdFactory( Koi::Name const & name );

/// The VLANs that they got. The bridging agent writes it.
class KOI_PUBLIC ResponseReservedVlanId : public Koi::EntityOf< ResponseReservedVlanId > {
 public:
  explicit ResponseReservedVlanId( Koi::Name const & name );

  class KoiResponse;
  /// by interface; none is an answer, too
  Bridging::VlanIdOrNone response( Wirex::IntfId const & k ) const;
  Koi::HashMap< KoiResponse, Wirex::IntfId, Bridging::VlanIdOrNone > const & response() const {
    return response_;
  }
  using ResponseIterator = Koi::HashMap< KoiResponse, Wirex::IntfId,
      Bridging::VlanIdOrNone >::Iterator;
  ResponseIterator responseIterator();
  void responseIs( Wirex::IntfId const & k, Bridging::VlanIdOrNone const & v );
  Bridging::VlanIdOrNone responseDel( Wirex::IntfId const & k );
  Bridging::VlanIdOrNone responseDel( ResponseIterator const & i );
  void responseDelAll();
  void responseNotify( Wirex::IntfId const & k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< ResponseReservedVlanId > {
   public:
    virtual void onResponse() {}
    virtual void onResponse( Wirex::IntfId const & ) {}
    virtual void onResponseKoiImmediate( Wirex::IntfId const & k ) {
      koiPass( koiOnResponse ); onResponse( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Wirex::IntfId const & > koiOnResponse{
      koiFirst + 0, &NotifieeConst::onResponse, &NotifieeConst::onResponseKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, ResponseReservedVlanId >;

  static constexpr char koiName[] = "LumoExt::ResponseReservedVlanId";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &ResponseReservedVlanId::name )
    };
  }
  template< class Self = ResponseReservedVlanId >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "response", &Self::response_, &Self::responseIs, &Self::responseDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 1;
  static Koi::KoiType const _koiType;

 private:
  Koi::HashMap< KoiResponse, Wirex::IntfId, Bridging::VlanIdOrNone > response_;
};

/// A new ResponseReservedVlanId without a parent.
KOI_PUBLIC Koi::Ptr< ResponseReservedVlanId > responseReservedVlanIdFactory(
    Koi::Name const & name );

}  // namespace LumoExt
