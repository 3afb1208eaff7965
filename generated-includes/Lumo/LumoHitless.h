// LumoHitless.h: written by koigen from LumoHitless.koi. Change that file, not this one.
#pragma once

#include <koi/Value.h>
#include <koi/Entity.h>
#include <wirex/IntfId.h>

namespace Lumo {

/// How far the bridging state has come back after a hitless upgrade. The bridging agent writes it;
/// the agents that wait for a part of the state observe it. A new one is the state at the start of
/// an
/// upgrade: nothing is back, nothing is known to wait.
class KOI_PUBLIC LumoHitlessState : public Koi::EntityOf< LumoHitlessState > {
 public:
  explicit LumoHitlessState( Koi::Name const & name );

  /// the bridging status is up to date again
  bool lumoStatusUpdate() const { return lumoStatusUpdate_; }
  void lumoStatusUpdateIs( bool v ) {
    koiIs( lumoStatusUpdate_, v, NotifieeConst::koiOnLumoStatusUpdate );
  }

  /// the sub-interfaces are up again
  bool lumoSubIntfUp() const { return lumoSubIntfUp_; }
  void lumoSubIntfUpIs( bool v ) { koiIs( lumoSubIntfUp_, v, NotifieeConst::koiOnLumoSubIntfUp ); }

  /// the down-link state is up to date again
  bool lumoDownLinksUpdate() const { return lumoDownLinksUpdate_; }
  void lumoDownLinksUpdateIs( bool v ) {
    koiIs( lumoDownLinksUpdate_, v, NotifieeConst::koiOnLumoDownLinksUpdate );
  }

  class KoiSubIntfWaitQ;
  /// the sub-interfaces still to be restored, an entry each
  bool subIntfWaitQ( Wirex::IntfId const & k ) const;
  Koi::HashMap< KoiSubIntfWaitQ, Wirex::IntfId, bool > const & subIntfWaitQ() const {
    return subIntfWaitQ_;
  }
  using SubIntfWaitQIterator = Koi::HashMap< KoiSubIntfWaitQ, Wirex::IntfId, bool >::Iterator;
  SubIntfWaitQIterator subIntfWaitQIterator();
  void subIntfWaitQIs( Wirex::IntfId const & k, bool v );
  bool subIntfWaitQDel( Wirex::IntfId const & k );
  bool subIntfWaitQDel( SubIntfWaitQIterator const & i );
  void subIntfWaitQDelAll();
  void subIntfWaitQNotify( Wirex::IntfId const & k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< LumoHitlessState > {
   public:
    virtual void onLumoStatusUpdate() {}
    virtual void onLumoStatusUpdateKoiImmediate() {
      koiPass( koiOnLumoStatusUpdate ); onLumoStatusUpdate();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnLumoStatusUpdate{
      koiFirst + 0, &NotifieeConst::onLumoStatusUpdate,
          &NotifieeConst::onLumoStatusUpdateKoiImmediate };

    virtual void onLumoSubIntfUp() {}
    virtual void onLumoSubIntfUpKoiImmediate() { koiPass( koiOnLumoSubIntfUp ); onLumoSubIntfUp(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnLumoSubIntfUp{
      koiFirst + 1, &NotifieeConst::onLumoSubIntfUp, &NotifieeConst::onLumoSubIntfUpKoiImmediate };

    virtual void onLumoDownLinksUpdate() {}
    virtual void onLumoDownLinksUpdateKoiImmediate() {
      koiPass( koiOnLumoDownLinksUpdate ); onLumoDownLinksUpdate();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnLumoDownLinksUpdate{
      koiFirst + 2, &NotifieeConst::onLumoDownLinksUpdate,
          &NotifieeConst::onLumoDownLinksUpdateKoiImmediate };

    virtual void onSubIntfWaitQ() {}
    virtual void onSubIntfWaitQ( Wirex::IntfId const & ) {}
    virtual void onSubIntfWaitQKoiImmediate( Wirex::IntfId const & k ) {
      koiPass( koiOnSubIntfWaitQ ); onSubIntfWaitQ( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Wirex::IntfId const & > koiOnSubIntfWaitQ{
      koiFirst + 3, &NotifieeConst::onSubIntfWaitQ, &NotifieeConst::onSubIntfWaitQKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, LumoHitlessState >;

  static constexpr char koiName[] = "Lumo::LumoHitlessState";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &LumoHitlessState::name )
    };
  }
  template< class Self = LumoHitlessState >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "lumoStatusUpdate", &Self::lumoStatusUpdate_, &Self::lumoStatusUpdateIs ),
      Koi::attribute( "lumoSubIntfUp", &Self::lumoSubIntfUp_, &Self::lumoSubIntfUpIs ),
      Koi::attribute( "lumoDownLinksUpdate", &Self::lumoDownLinksUpdate_,
                      &Self::lumoDownLinksUpdateIs ),
      Koi::attribute( "subIntfWaitQ", &Self::subIntfWaitQ_, &Self::subIntfWaitQIs,
                      &Self::subIntfWaitQDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 4;
  static Koi::KoiType const _koiType;

 private:
  bool lumoStatusUpdate_{};
  bool lumoSubIntfUp_{};
  bool lumoDownLinksUpdate_{};
  Koi::HashMap< KoiSubIntfWaitQ, Wirex::IntfId, bool > subIntfWaitQ_;
};

/// A new LumoHitlessState without a parent.
KOI_PUBLIC Koi::Ptr< LumoHitlessState > lumoHitlessStateFactory( Koi::Name const & name );

}  // namespace Lumo
