// Context.h: what every emitter needs to know about the model: how C++ spells what a model names,
// and the questions about an entity that have one answer.
//
// Needs a checked model; then nothing here can fail.
#pragma once

#include <string>
#include <vector>

#include "Model.h"
#include "Page.h"

namespace Koigen {

/// "fdbStatus" -> "FdbStatus".
std::string capital( std::string name );

/// "FdbStatus" -> "fdbStatus".
std::string lowerCamel( std::string name );

/// The named page, filled.
std::string page( std::string const & name, Fill const & fill );

/// One parameter of an entity's or reactor's constructor. Own parameters of the entity have a
/// member, those of a foreign base only name and type.
struct EntityParameter {
  std::string name;
  TypeUse type;
  Member const * member = nullptr;
  Declaration const * owner = nullptr;  // the entity that states it: a base, or the entity itself
};

class Context {
 public:
  Context( Model const & model, Module const & module ) : model_( model ), module_( module ) {}

  Model const & model() const { return model_; }
  Module const & module() const { return module_; }

  /// "Koi::U16", "VlanId", "Koi::Ptr< TopoConfig >": what a variable of that type is called. A
  /// `weak` use is spelled as the plain entity name, for the collection or cell says how it is
  /// held.
  std::string cpp( TypeUse const & type ) const;

  /// The type without any pointer around it.
  std::string bare( TypeUse const & type ) const;

  /// How it is handed over: numbers, bool and enumerators by value, all else by "const &".
  std::string argument( TypeUse const & type ) const;

  /// A parameter list as the model has it: "SwitchIntfConfig const & other, Koi::U32 n"; "" for
  /// none.
  std::string parameters( std::vector< Parameter > const & list ) const;

  /// C++ of a default or a constant: "9236", "\"1-4094\"", "SwitchportMode::trunk", "VlanId( 1 )",
  /// "tapTruncationSizeMax()". Empty when there is none.
  std::string initial( Initial const & initial ) const;

  bool isPointer( TypeUse const & type ) const { return type.hold != TypeUse::whole; }
  bool isEntity( TypeUse const & type ) const;
  bool isEnumeration( TypeUse const & type ) const;
  bool isWrapper( TypeUse const & type ) const;

  /// A wrapper that admits not every number: it is checked again before it is stored.
  bool isRanged( TypeUse const & type ) const;

  /// The parameters of an entity's constructor, those of its bases first. An empty list means that
  /// it is built from a Koi::Name alone. Of a reactor, what it watches is among them, as a 'ref'.
  static std::vector< EntityParameter > constructorOf( Declaration const & entity );

  /// Which of constructorOf() is the entity's name; -1: none is (the list is empty, or the first is
  /// the key, whose text becomes the name).
  static int nameIndex( std::vector< EntityParameter > const & parameters );

  /// The member of that name of a declaration, or of an entity's bases; null when there is none.
  static Member const * memberOf( Declaration const & declaration, std::string const & name );

 private:
  Model const & model_;
  Module const & module_;
};

}  // namespace Koigen
