// KoiType.h: the type node, which tells the runtime all about one type, and the registry of them.
//
// A node is static data, complete at build time. Nodes are registered while libraries load, and
// then only read; any thread may look one up after that.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include <boost/container/small_vector.hpp>

#include <koi/Export.h>
#include <koi/NboAttrLog.h>
#include <koi/Ptr.h>
#include <koi/String8.h>

namespace Koi {

class AttributeAccess;
class Entity;
class FlowIn;
class FlowOut;
class GenericIf;
class GenericIfIterator;
class GenericNotifiee;
struct EnumType;
struct KoiType;
struct RecordOps;

using GenericIfPtr = Ptr< GenericIf const >;

/// The wrapped arguments of a constructor: the fields in declaration order.
using CtorArgs = boost::container::small_vector< GenericIfPtr, 8 >;

/// What reflection is asked to do. Attributes are numbered as the type node lists them: the fields
/// in declaration order, then `hash` where the type has one.
///
/// Of an entity: read takes the key of a collection's member, and gives null where there is none;
/// set takes what attrIs() takes and gives the child, del what attrDel() takes and gives what was
/// there; equal asks for the same entity. Both raise what the mutators raise.
struct GenericIfOp {
  enum Code : U32 { read = 0, set = 1, del = 2, call = 8, equal = 9 };
  static constexpr int noAttribute = -1;

  int attribute = noAttribute;
  U32 code = read;
};

/// One attribute of a type: a value's field, an entity's attribute.
struct KoiAttribute {
  char const * name;
  KoiType const * type;           ///< of the field, or of a collection's members; null: a reference
  bool zeroAdmitted = false;      ///< 0 is admitted here although the type's range refuses it
  KoiType const * key = nullptr;  ///< of a collection
  AttributeAccess const * access = nullptr;  ///< of an entity's attribute
  KoiType const * target = nullptr;          ///< of a reference: what it refers to
  bool keyInValue = false;                   ///< members hold their key: set takes the value alone
  bool inKeyOrder = false;                   ///< a collection that is walked by ascending key
  bool isWeak = false;                       ///< a reference that does not keep its target
  bool isConstant = false;                   ///< it is the same for all entities of the type
};

/// One parameter of an entity's constructor.
struct KoiParameter {
  char const * name;       ///< "_genId"
  KoiType const * type;    ///< null: a reference
  KoiType const * target;  ///< of a reference: what it refers to
  bool isInitial;          ///< it says what an attribute is at first, which may change
};

/// Told of a change of an entity: the attribute, and the key of the member; no key where there are
/// no members.
using GenericNotifieeTold =
    std::function< void( KoiAttribute const & attribute, GenericIfPtr const & key ) >;

/// A type node. Entry points that make a value give null and set *notHandled when `type` is not the
/// node they belong to.
struct KoiType {
  enum Kind : U32 { primitive, enumeration, single, structure, entity, reactor };

  char const * name;  ///< fully qualified, "Bridging::VlanId"
  std::size_t size;   ///< of a value in memory, in bytes
  Kind kind;
  std::span< KoiAttribute const > fields = {};
  EnumType const * enumType = nullptr;              ///< of an enumeration
  std::span< KoiParameter const > parameters = {};  ///< of an entity's constructor
  bool hashable = false;                            ///< the type has hash()

  /// Parses the whole text. Raises ParseException or RangeException.
  GenericIfPtr ( *genericIfFromStrRep )( KoiType const * type, String8 const & text,
                                         bool * notHandled ) = nullptr;
  /// Builds from the fields' values. Raises RangeException, or ArgumentException when the arguments
  /// are too few, too many, or of other types.
  GenericIfPtr ( *genericIfFromCtorArgs )( KoiType const * type, CtorArgs const & args,
                                           bool * notHandled ) = nullptr;
  /// Wraps a copy of a raw value.
  GenericIfPtr ( *genericIfFromVoidPointer )( KoiType const * type, void const * value,
                                              bool * notHandled ) = nullptr;
  /// Does what `op` says. Raises OpNotSupportedException, and ArgumentException for arguments of
  /// the wrong number or type.
  GenericIfPtr ( *genericIfAttributeOp )( GenericIf const & value, GenericIfOp const & op,
                                          CtorArgs const & args, bool * notHandled ) = nullptr;

  /// Appends the attribute-log encoding of the raw value.
  void ( *logWrite )( void const * value, NboAttrLog::Out & out ) = nullptr;
  /// Reads one value. Raises ParseException or RangeException.
  GenericIfPtr ( *logRead )( NboAttrLog::In & in ) = nullptr;
  /// a < b of two raw values; null when the type has no order.
  bool ( *less )( void const * a, void const * b ) = nullptr;
  /// How its values lie in the slots of a table; null when they do not.
  RecordOps const * record = nullptr;

  /// Of an entity: one that is built from what writeCtorArgs() wrote; null when that is refused,
  /// which is counted; nothing when it refers to what is not here yet. Raises ParseException.
  std::optional< Ptr< Entity > > ( *newEntityForAttrLog )( Name const & name,
                                                           FlowIn & flow ) = nullptr;
  void ( *writeCtorArgs )( Entity const & entity, FlowOut & flow ) = nullptr;
  /// Whether two entities of the type were built from the same arguments.
  bool ( *areBuiltAlike )( Entity const & a, Entity const & b ) = nullptr;
  /// Ends the reactors that an entity and all that it owns have; null where there can be none.
  void ( *endReactors )( Entity & entity ) = nullptr;
  /// A walk over the members of an entity's collection; null, and *notHandled set, where the
  /// attribute has none.
  Ptr< GenericIfIterator > ( *genericIfAttributeIterator )( GenericIf const & value, int attribute,
                                                            bool * notHandled ) = nullptr;
  /// Observes an entity of this type, until what comes back is destroyed.
  std::unique_ptr< GenericNotifiee > ( *genericNotifiee )( Entity const & entity,
                                                           GenericNotifieeTold told ) = nullptr;

  /// An entity of this type, of that name and, unless that is null, that parent, which has to own
  /// it. `args` are the arguments of its constructor but for a parameter that is the name. Raises
  /// ArgumentException "<type> is no entity type", or for other arguments than it takes, and
  /// RangeException.
  KOI_PUBLIC Ptr< Entity > newEntity( Entity * parent, Name const & name, CtorArgs args ) const;
};

/// Registers a type under its name. Registering the same node again changes nothing; another node
/// of the same name ends the process.
KOI_PUBLIC void typeNodeIs( KoiType const * node );

/// The type of that name. Raises UnknownTypeException "type '<name>' is not registered".
KOI_PUBLIC KoiType const * typeNode( String8 const & name );

/// All registered types, by name.
KOI_PUBLIC std::vector< KoiType const * > typeNodes();

/// Registers the types of one module when its library is loaded.
struct ModuleTypes {
  explicit ModuleTypes( std::span< KoiType const * const > nodes ) {
    for( auto const * node : nodes )
      typeNodeIs( node );
  }
};

}  // namespace Koi
