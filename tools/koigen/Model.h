// Model.h: what the model files of one call say. Plain data, no C++ text.
//
// The parser fills it as written; the checker resolves the names: afterwards every TypeUse says
// what it stands for, and an emitter follows its pointer. Pointers stay good as long as the Model
// lives.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <vector>

namespace Koigen {

struct Declaration;
struct Member;
struct Module;

/// Where something stands: the file as it was named to koigen, line and column counted from 1.
struct Place {
  std::string file;
  std::size_t line = 1;
  std::size_t column = 1;
};

enum class Primitive { none, u8, u16, u32, u64, i32, boolean, seconds, string8, name };

/// A type as a model names it. A checked use has a primitive or a declaration, never both; neither
/// only for "Koi::Entity" (any entity) and for the result of a function that returns nothing.
struct TypeUse {
  enum Hold { whole, ref, weak, own };

  Place place;
  std::string text;  // "u16", "VlanId", "Wirex::EthAddr"; empty: nothing
  Hold hold = whole;
  Primitive primitive = Primitive::none;
  Declaration const * declaration = nullptr;
  bool hidden = false;  // by the checker: C++ would look for the name in a namespace nearer by

  /// Any entity, which no model declares.
  bool isOfAnyType() const { return text == "Koi::Entity"; }
};

/// One parameter of a function, of a constructor by hand or of a foreign entity.
struct Parameter {
  Place place;
  TypeUse type;
  bool isConst = false;
  bool isReference = false;
  std::string name;  // may be empty, but for a foreign entity
};

/// The default of an attribute, the value of a constant, an argument of another.
struct Initial {
  enum Kind { none, number, quoted, boolean, word, construction };

  Kind kind = none;
  Place place;
  std::string text;  // as written; of a quoted one, what stands between the quotes
  TypeUse type;      // what a construction builds
  std::vector< Initial > arguments;

  // By the checker, for a word: one of the two.
  Declaration const * enumeration = nullptr;
  Member const * constant = nullptr;
};

/// What a watched entity may call.
struct Callback {
  Place place;
  std::string name;  // onFdbStatus
  bool keyed = false;
  TypeUse key;
  Member const * attribute = nullptr;  // by the checker; none when the watched entity is foreign
};

/// What stands between the braces of a value, an entity or a reactor.
struct Member {
  enum Kind {
    field,
    constant,
    function,     // of a value or an entity, its body by hand
    constructor,  // of a value, its body by hand
    param,
    scalar,
    hidden,  // of an entity, for functions by hand: nobody else sees it
    derived,
    hashed,
    ordered,
    queue,
    table,  // in shared memory
    child,
    reactor,  // of an entity, which owns it
    watch,
    watchEach,
    start,
    cleanup
  };

  Kind kind = field;
  Place place;
  std::string name, doc;
  TypeUse type;  // what it holds, what a function returns, what is watched
  TypeUse key;   // of a collection, of a queue (its index), of "watch each"
  Initial initial;
  std::vector< Parameter > parameters;  // of a function or constructor
  std::vector< Callback > callbacks;

  bool settable = false;     // a field or a parameter with a mutator
  bool orZero = false;       // a field that may be 0 besides its type's range
  bool notNull = false;      // a pointer that refuses null
  bool isStatic = false;     // a function
  bool isOperation = false;  // a function that changes its entity
  bool isVirtual = false;
  bool isOverride = false;

  std::string bound;  // "max bound": the constant that limits a scalar
  Place boundPlace;
  bool storedFirst = false;  // keeps the value that the bound refuses
  std::string then;          // of a reactor's attribute: the handler that a change runs
  std::string maxBytes;      // "max 150 bytes"; empty: no limit
  std::string byField;       // "by address": the field of the value that is the key
  Place byPlace;
  std::string source, sourceField;  // a derived attribute that is a field of another

  /// True for a hashed or key-ordered collection and for a queue.
  bool isCollection() const { return kind == hashed || kind == ordered || kind == queue; }
  /// Those, and tables.
  bool isKeyed() const { return isCollection() || kind == table; }
};

struct Enumerator {
  Place place;
  std::string name, doc;
  std::string number;  // as written; empty: one more than the one before
  std::uint32_t value = 0;
};

/// A whole number of up to 64 bits and a sign.
struct Integer {
  bool negative = false;
  std::uint64_t magnitude = 0;
};

/// The numbers that a wrapper admits, or the lengths.
struct Range {
  enum Kind { none, between, positive, length };

  Kind kind = none;
  Place place;
  std::string low, high;  // as written: numbers or constants of the wrapper; a length has high only
  Integer lowest, highest;
};

struct Declaration {
  enum Kind { wrapper, structure, enumeration, entity, reactor, function };

  Kind kind = wrapper;
  Place place;
  std::string scope, name, doc;
  Module const * module = nullptr;
  std::size_t index = 0;  // its position in its module

  bool foreign =
      false;           // written by hand elsewhere; a foreign value is a structure without members
  std::string header;  // of a foreign one: "wirex/EthAddr.h"
  std::vector< Parameter > parameters;  // a foreign entity's constructor

  std::string numBytes;  // of a foreign value, as written: "of 6 bytes"; empty: of no fixed size
  Place bytesPlace;

  bool inTable = false;    // a structure that lies in the slots of a table
  std::string hashHeader;  // "hashed in": where the hash of its key is; empty: as of any key
  Place hashPlace;

  bool inOrder = false;
  bool unhashed = false;
  bool textByHand = false;
  bool orderByHand = false;

  TypeUse stored;  // of a wrapper
  std::string field = "value";
  Range range;

  std::vector< Enumerator > enumerators;
  TypeUse base;                   // of an entity; text empty: none
  std::vector< Member > members;  // a free function has exactly one

  std::string fullName() const { return scope + "::" + name; }
};

struct Uses {
  Place place;
  std::string name;
  Module const * module = nullptr;
};

struct Module {
  Place place;  // of its name
  std::string name;
  std::string prefix;     // of its generated header: "Lumo/"
  bool imported = false;  // looked up, not emitted
  std::vector< Uses > uses;
  std::vector< Declaration > declarations;

  // By the checker: entities that are pointed to before, or without, their own header.
  std::vector< Declaration const * > forward;
};

struct Model {
  Model() = default;
  Model( Model && ) = default;
  Model & operator=( Model && ) = default;

  std::deque< Module > modules;
  std::map< std::string, Declaration const * > types;  // by full name, after the check
};

}  // namespace Koigen
