// Dir.h: written by koigen from Dir.koi. Change that file, not this one.
#pragma once

#include <koi/Value.h>
#include <koi/Entity.h>

namespace Coredb {

/// Entities of any type, by name: other directories among them. Whoever has it makes entries; an
/// entry has the directory as its parent until it is taken out.
class KOI_PUBLIC Dir : public Koi::EntityOf< Dir > {
 public:
  explicit Dir( Koi::Name const & name );

  class KoiEntity;
  /// its entries
  Koi::Ptr< Koi::Entity > entity( Koi::Name const & k ) const;
  Koi::RbTreeMap< KoiEntity, Koi::Name, Koi::Owned< Koi::Entity > > const & entity() const {
    return entity_;
  }
  using EntityIterator = Koi::RbTreeMap< KoiEntity, Koi::Name,
      Koi::Owned< Koi::Entity > >::Iterator;
  EntityIterator entityIterator();
  /// The entity itself is the child from now on, and is called k; one that is it already stays. Of
  /// what is refused, koi/Children.h requireAdoptable() says the exceptions.
  Koi::Ptr< Koi::Entity > entityIs( Koi::Name const & k, Koi::Ptr< Koi::Entity > const & v );
  Koi::Ptr< Koi::Entity > entityDel( Koi::Name const & k );
  Koi::Ptr< Koi::Entity > entityDel( EntityIterator const & i );
  void entityDelAll();
  void entityNotify( Koi::Name const & k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< Dir > {
   public:
    virtual void onEntity() {}
    virtual void onEntity( Koi::Name const & ) {}
    virtual void onEntityKoiImmediate( Koi::Name const & k ) {
      koiPass( koiOnEntity ); onEntity( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Koi::Name const & > koiOnEntity{
      koiFirst + 0, &NotifieeConst::onEntity, &NotifieeConst::onEntityKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, Dir >;

  static constexpr char koiName[] = "Coredb::Dir";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &Dir::name )
    };
  }
  template< class Self = Dir >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "entity", &Self::entity_, &Self::entityIs, &Self::entityDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 1;
  static Koi::KoiType const _koiType;

 private:
  Koi::RbTreeMap< KoiEntity, Koi::Name, Koi::Owned< Koi::Entity > > entity_;
};

/// A new Dir without a parent.
KOI_PUBLIC Koi::Ptr< Dir > dirFactory( Koi::Name const & name );

}  // namespace Coredb
