// KoiType.h: the type node, which tells the runtime all about one type, and the registry of them.
//
// A node is static data, complete at build time. Nodes are registered while libraries load, and
// then only read; any thread may look one up after that.
#pragma once

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
struct EnumType;
struct KoiType;

using GenericIfPtr = Ptr< GenericIf const >;

/// The wrapped arguments of a constructor: the fields in declaration order.
using CtorArgs = boost::container::small_vector< GenericIfPtr, 8 >;

/// What reflection is asked to do. Attributes are numbered as the type node lists them: the fields
/// in declaration order, then `hash` where the type has one.
struct GenericIfOp {
  enum Code : U32 { read = 0, call = 8, equal = 9 };
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
};

/// A type node. Entry points that make a value give null and set *notHandled when `type` is not the
/// node they belong to.
struct KoiType {
  enum Kind : U32 { primitive, enumeration, single, structure, entity, reactor };

  char const * name;  ///< fully qualified, "Bridging::VlanId"
  std::size_t size;   ///< of a value in memory, in bytes
  Kind kind;
  std::span< KoiAttribute const > fields = {};
  EnumType const * enumType = nullptr;  ///< of an enumeration
  bool hashable = false;                ///< the type has hash()

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
  /// Reads a field, calls hash, or compares with args[0]. Raises OpNotSupportedException.
  GenericIfPtr ( *genericIfAttributeOp )( GenericIf const & value, GenericIfOp const & op,
                                          CtorArgs const & args, bool * notHandled ) = nullptr;

  /// Appends the attribute-log encoding of the raw value.
  void ( *logWrite )( void const * value, NboAttrLog::Out & out ) = nullptr;
  /// Reads one value. Raises ParseException or RangeException.
  GenericIfPtr ( *logRead )( NboAttrLog::In & in ) = nullptr;
  /// a < b of two raw values; null when the type has no order.
  bool ( *less )( void const * a, void const * b ) = nullptr;

  /// Of an entity: one that is built from what writeCtorArgs() wrote; null when that is refused,
  /// which is counted. Raises ParseException.
  Ptr< Entity > ( *newEntityForAttrLog )( Name const & name, FlowIn & flow ) = nullptr;
  void ( *writeCtorArgs )( Entity const & entity, FlowOut & flow ) = nullptr;
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
