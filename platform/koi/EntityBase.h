// EntityBase.h: Koi::Entity, the base of everything in the model that has identity: its name, its
// place in a tree, and how a change is told. Entity.h has the mutators.
//
// An entity lives on the heap, while a Ptr refers to it, and is changed and observed on one thread.
// docs/entities.md has the rules as tables: what an observer may do while it is told, where
// exceptions go, what a transaction is.
#pragma once

#include <exception>
#include <memory>
#include <tuple>
#include <type_traits>
#include <vector>

#include <koi/KoiType.h>
#include <koi/Notifiee.h>
#include <koi/Observers.h>
#include <koi/Place.h>
#include <koi/Transaction.h>
#include <koi/ValueHash.h>
#include <koi/WeakPtr.h>

namespace Koi {

class EntityLogs;
class KoiNboAttrLogSa;
class Mirror;

/// The base of everything in the model that has identity.
class KOI_PUBLIC Entity : public PtrInterface {
 public:
  /// Unique within the parent's collection.
  Name const & name() const { return name_; }
  /// For an entity that is restored from a backup, before anybody knows it by its name: the name it
  /// had. Nobody is told.
  void nameIsFromBackup( Name const & name ) { name_ = name; }

  /// The entity whose collection or child this is; null when there is none, or when it is gone.
  Entity * parent() const { return parent_; }

  /// The names from the topmost parent down to this entity, '/' between them; a '/' or '%' inside a
  /// name is written %2F or %25.
  String8 fullName() const;

  /// The type node of the entity's own type.
  virtual KoiType const * koiType() const = 0;

  /// A number that grows with every change, observed or not.
  U64 koiChanges() const { return changes_; }

  /// For the attribute that owns this entity: its owner, and its place in the owner's attribute
  /// table; null where a reactor owns it.
  void koiParentIs( Entity * parent, unsigned attribute = 0 );
  /// For the same: it lets the entity go, which leaves all logs.
  void koiDisowned();
  /// Takes a tree down: ends the reactors that this entity and all below it own, and lets them go.
  /// The tree stays. An entity that leaves its parent does so by itself.
  void koiEndReactors();
  /// The place, in the parent's attribute table, of the attribute that owns this entity.
  unsigned koiParentAttribute() const { return parentAttribute_; }
  /// Tells this child from those that its parent had before under the same key: deleted and created
  /// again is another one.
  U64 koiIncarnation() const { return incarnation_; }

  /// Tells the observers alone: attrNotify( k ), and what changed in a table outside of it.
  template< class... Key >
  void koiNotify( AttributeCallback< Key... > const & callback,
                  std::type_identity_t< Key >... key ) {
    ++changes_;
    if( observers_ && !observers_->empty() )
      tellOrNote( callback, key... );
  }

  /// Attaches the entity to that log; it may be attached already. The peer is told all of it, or,
  /// where it has that, what changes. A log does this itself with what it mirrors.
  KoiNboAttrLogSa & koiNboAttrLogSaIs( Mirror & out, bool whole = true );
  /// Detaches the entity, and what it owns, from that log.
  void koiNboAttrLogSaDel( Mirror & out );
  /// The adapter of that log; null when the entity is not attached.
  KoiNboAttrLogSa * koiNboAttrLogSa( Mirror const & out ) const;
  /// For adapters.
  EntityLogs * koiLogs() const { return logs_.get(); }

  /// What weak pointers ask whether this entity is still there.
  Ptr< EntityLife > koiLife() const;

  /// How many attributes this type has: those of a type that extends it begin there.
  static constexpr unsigned koiEnd = 0;

 protected:
  explicit Entity( Name name );
  virtual ~Entity();
  void handleZeroRef() const override;

  /// Whether somebody may have to be told of a change: there are logs, or there were observers.
  bool koiHasAudience() const { return logs_ || observers_; }
  /// Whether a change is to be refused, by koiRefuse(): the entity is a read-only proxy.
  bool koiIsRefusing() const { return logs_ && logsRefuse(); }
  /// Raises ReadOnlyException "write-update from readonly proxy: <full name>".
  [[noreturn]] void koiRefuse() const;

  /// Counts the change that is about to be made. What releasing an old value brings about comes
  /// after it.
  Stamp koiStamp() { return { ++changes_, logs_ ? takeOrigin() : U16{ 0 } }; }
  /// There was no change after all.
  void koiUnstamp() { --changes_; }

  /// Marks the change for the logs and tells the observers: now, or at the end of the open
  /// transaction.
  template< class... Key >
  void koiTell( Stamp stamp, AttributeCallback< Key... > const & callback,
                std::type_identity_t< Key >... key ) {
    if( logs_ )
      mark( callback.index, stamp.origin );
    if( observers_ && !observers_->empty() )
      tellOrNote( callback, key... );
  }

 private:
  friend class NotifieeBase;
  template< class... Key >
  class ChangeNotice;

  template< class... Key >
  void tellOrNote( AttributeCallback< Key... > const & callback,
                   std::type_identity_t< Key >... key );
  template< class... Key >
  void tellEach( AttributeCallback< Key... > const & callback, std::type_identity_t< Key >... key );

  bool logsRefuse() const;
  U16 takeOrigin();
  void mark( unsigned attribute, U16 origin );
  void leaveLogs();

  // Observing does not change the entity, so an observer attaches to a constant one as well.
  Observers & observers() const;
  bool hasBeenKept() const;
  void retire() const;

  Name name_;
  Entity * parent_ = nullptr;
  unsigned parentAttribute_ = 0;
  U64 incarnation_ = 0;
  U64 changes_ = 0;
  mutable std::unique_ptr< EntityLogs > logs_;      // none until a log is attached
  mutable std::unique_ptr< Observers > observers_;  // none until somebody observes
  mutable Ptr< EntityLife > life_;
};

/// What the end of a transaction tells of one attribute or key of one entity.
template< class... Key >
class Entity::ChangeNotice final : public Notice {
 public:
  ChangeNotice( Entity * entity, AttributeCallback< Key... > const & callback, Key... key )
      : Notice( hashOf( entity, callback.index, key... ) ),
        entity_( entity ),
        callback_( callback ),
        key_( key... ) {}

  void tell() override {
    std::apply( [&]( auto const &... key ) { entity_->tellEach( callback_, key... ); }, key_ );
  }
  bool isLike( Notice const & other ) const override {
    auto const * const notice = dynamic_cast< ChangeNotice const * >( &other );
    return notice && notice->entity_ == entity_ && notice->callback_.index == callback_.index &&
           notice->key_ == key_;
  }

 private:
  static std::size_t hashOf( Entity * entity, unsigned index, Key const &... key ) {
    std::size_t hash = reinterpret_cast< std::size_t >( entity ) + index;
    ( ( hash = hash * 31 + hashOfKey( key ) ), ... );
    return hash;
  }

  Ptr< Entity > const entity_;
  AttributeCallback< Key... > const & callback_;  // a constant
  std::tuple< std::remove_cvref_t< Key >... > const key_;
};

template< class... Key >
[[gnu::noinline]] void Entity::tellOrNote( AttributeCallback< Key... > const & callback,
                                           std::type_identity_t< Key >... key ) {
  if( auto * const open = OpenTransaction::current() )
    open->add( std::make_unique< ChangeNotice< Key... > >( this, callback, key... ) );
  else
    tellEach( callback, key... );
}

template< class... Key >
void Entity::tellEach( AttributeCallback< Key... > const & callback,
                       std::type_identity_t< Key >... key ) {
  if( !observers_ )
    return;
  Ptr< Entity > const alive( this );
  std::exception_ptr first;
  {
    Observers::Walk walk( *observers_, *this );
    AnyCallback< Key... > const on = callback.any( callback );
    U64 const passed = NotifieeBase::bitOf( on.index );
    while( NotifieeBase * const observer = walk.next( on.depth, passed ) )
      try {
        observer->tell( on, passed, key... );
      } catch( ... ) {  // whatever a callback throws, it is the mutator's caller who gets it
        if( !first )
          first = std::current_exception();
      }
  }
  if( first )
    std::rethrow_exception( first );
}

}  // namespace Koi
