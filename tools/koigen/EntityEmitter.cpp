// EntityEmitter.cpp: which page an entity and each of its members takes, and what fills it.
#include "EntityEmitter.h"

#include <algorithm>

#include "Emitter.h"

namespace Koigen {
namespace {

using Texts = std::vector< std::string >;

std::string angled( std::string const & what, std::string const & in ) {
  return what + "< " + in + " >";
}

/// What holds one value, reference or child.
std::string cellType( Context const & context, TypeUse const & type ) {
  switch( type.hold ) {
    case TypeUse::ref:
      return angled( "Koi::Ptr", context.bare( type ) );
    case TypeUse::weak:
      return angled( "Koi::WeakPtr", context.bare( type ) );
    case TypeUse::own:
      return angled( "Koi::Owned", context.bare( type ) );
    case TypeUse::whole:
      break;
  }
  return context.cpp( type );
}

std::string tagOf( Member const & member ) { return "Koi" + capital( member.name ); }

std::string collectionType( Context const & context, Member const & member ) {
  char const * const kind = member.kind == Member::hashed    ? "Koi::HashMap"
                            : member.kind == Member::ordered ? "Koi::RbTreeMap"
                                                             : "Koi::LinkQueue";
  return angled( kind, tagOf( member ) + ", " + context.cpp( member.key ) + ", " +
                           cellType( context, member.type ) );
}

std::string tableType( Context const & context, Member const & member ) {
  return angled( "KoiQuill::KoiQuillMap",
                 context.cpp( member.key ) + ", " + context.cpp( member.type ) );
}

bool holdsInnerReactors( Member const & member ) {
  return member.type.hold == TypeUse::own && !member.type.isOfAnyType() &&
         member.type.declaration->kind == Declaration::reactor;
}

std::string callback( Member const & member ) {
  return "NotifieeConst::koiOn" + capital( member.name );
}

/// A mutator that refuses nothing stands in the class: an attribute that nobody observes is changed
/// without a call.
MemberTexts scalarTexts( Context const & context, MemberOwner const & owner,
                         Member const & member ) {
  std::string const on = owner.notifies ? ", " + callback( member ) : "";
  std::string const check = refusal( owner.declaration, member );
  Fill declared{ { "doc", member.doc },
                 { "attr", member.name },
                 { "type", givenType( context, member.type ) },
                 { "read", member.name + ( member.type.hold == TypeUse::weak ? "_.ptr()" : "_" ) },
                 { "virtual", member.isVirtual ? "virtual " : "" },
                 { "argument", givenArgument( context, member.type ) } };
  if( !member.then.empty() ) {
    auto const & all = owner.declaration.members;
    bool const startsOver = std::any_of( all.begin(), all.end(), [&]( Member const & m ) {
      return m.kind == Member::start && m.name == member.then;
    } );
    declared["then"] = startsOver ? "koiRunStart" : member.then;
    return { page( "reactorScalarThen", declared ), {} };
  }
  if( !member.storedFirst && check.empty() ) {
    declared["on"] = on;
    return { page( "entityScalarPlain", declared ), {} };
  }
  Fill defined{ { "Owner", owner.declaration.name },
                { "attr", member.name },
                { "argument", declared["argument"] },
                { "on", on } };
  if( !member.storedFirst ) {
    declared["note"] = "";
    defined["refusal"] = check;
    return { page( "entityScalar", declared ), page( "entityScalarBody", defined ) };
  }
  declared["note"] = "/// Keeps what it refuses.";
  defined["bound"] = member.bound;
  defined["refusal"] = owner.declaration.name + "::" + member.name + " > " +
                       owner.declaration.name + "::" + member.bound + " not allowed";
  return { page( "entityScalar", declared ), page( "entityScalarStoredFirstBody", defined ) };
}

/// A type that was written in one namespace, as another one has to write it.
TypeUse spelledIn( std::string const & scope, TypeUse type, std::string const & written ) {
  if( type.declaration && scope != written )
    type.text = type.declaration->fullName();
  return type;
}

/// The parameters of a constructor, as that namespace has to write them.
std::vector< EntityParameter > constructorIn( std::string const & scope, Declaration const & d ) {
  auto all = Context::constructorOf( d );
  for( auto & p : all )
    p.type = spelledIn( scope, p.type, p.owner->scope );
  return all;
}

/// How a child is made: the parameters of its constructor behind the first `skip`, and what is
/// passed on.
void fillParameters( Context const & context, std::string const & scope, Member const & member,
                     std::size_t skip, Fill & fill ) {
  std::string const parameters =
      parameterList( context, constructorIn( scope, *member.type.declaration ), skip );
  fill["parameters"] = ( skip && !parameters.empty() ? ", " : "" ) + parameters;
}
void fillArguments( std::string const & scope, Member const & member, std::size_t skip,
                    Fill & fill ) {
  std::string const arguments =
      argumentList( constructorIn( scope, *member.type.declaration ), skip );
  fill["arguments"] = ( arguments.empty() ? "" : ", " ) + arguments;
}

/// What the bodies of a collection's mutators have in common. An entity's say the collection
/// without its tag, so that those that hold the same are compiled once.
Fill bodyFill( Context const & context, MemberOwner const & owner, Member const & member ) {
  return { { "Owner", owner.declaration.name },
           { "attr", member.name },
           { "key", context.argument( member.key ) },
           { "type", givenType( context, member.type ) },
           { "cell", member.name + ( owner.notifies ? "_.koiHeld()" : "_" ) },
           { "on", owner.notifies ? ", " + callback( member ) : "" } };
}

/// The mutators of a collection of children.
MemberTexts childMutators( Context const & context, MemberOwner const & owner,
                           Member const & member ) {
  if( member.type.isOfAnyType() )
    return { page( "collectionIsAny", { { "attr", member.name } } ),
             page( "collectionIsAnyBody", { { "Owner", owner.declaration.name },
                                            { "attr", member.name },
                                            { "on", callback( member ) } } ) };
  Fill declared{ { "attr", member.name },
                 { "type", givenType( context, member.type ) },
                 { "key", context.argument( member.key ) } };
  fillParameters( context, owner.declaration.scope, member, 1, declared );
  Fill defined = bodyFill( context, owner, member );
  defined["parameters"] = declared["parameters"];
  fillArguments( owner.declaration.scope, member, 1, defined );
  return { page( "collectionIsOwn", declared ), page( "collectionIsOwnBody", defined ) };
}

/// Those of a collection of values or references, and of a queue, which is written at its end, too.
MemberTexts valueMutators( Context const & context, MemberOwner const & owner,
                           Member const & member ) {
  bool const isBy = !member.byField.empty();
  std::string const argument = givenArgument( context, member.type );
  Fill declared{ { "attr", member.name }, { "argument", argument } };
  Fill defined = bodyFill( context, owner, member );
  std::string const type = defined["type"];
  defined.erase( "type" );
  defined["argument"] = argument;
  if( isBy ) {
    defined.erase( "key" );
    defined["field"] = member.byField;
    return { page( "collectionIsBy", declared ), page( "collectionIsByBody", defined ) };
  }
  declared["key"] = defined["key"];
  defined["refusal"] = refusal( owner.declaration, member );
  MemberTexts texts{ page( "collectionIs", declared ), page( "collectionIsBody", defined ) };
  if( member.kind == Member::queue ) {
    declared["type"] = defined["type"] = type;
    texts.declared += page( "collectionQueue", declared );
    texts.defined += page( "collectionQueueBody", defined );
  }
  return texts;
}

MemberTexts collectionTexts( Context const & context, MemberOwner const & owner,
                             Member const & member ) {
  MemberTexts const mutators = member.type.hold == TypeUse::own
                                   ? childMutators( context, owner, member )
                                   : valueMutators( context, owner, member );
  std::string const key = context.argument( member.key );
  Fill const declared{
      { "doc", member.doc },
      { "attr", member.name },
      { "Attr", capital( member.name ) },
      { "Tag", tagOf( member ) },
      { "collection", collectionType( context, member ) },
      { "type", givenType( context, member.type ) },
      { "key", key },
      { "mutators", mutators.declared },
      { "notify", owner.notifies ? "void " + member.name + "Notify( " + key + " k );" : "" } };
  Fill defined = bodyFill( context, owner, member );
  defined["Attr"] = capital( member.name );
  defined["mutators"] = mutators.defined;
  defined["notify"] = owner.notifies
                          ? page( "collectionNotifyBody", { { "Owner", owner.declaration.name },
                                                            { "attr", member.name },
                                                            { "key", key },
                                                            { "on", callback( member ) } } )
                          : "";
  return { page( "entityCollection", declared ), page( "entityCollectionBody", defined ) };
}

/// Whether observers are told of changes of that member.
bool isTold( Member const & m ) {
  return m.isKeyed() || m.kind == Member::scalar || m.kind == Member::child || m.settable;
}

/// The class of an entity, gathered member by member.
class EntityText {
 public:
  EntityText( Context const & context, Declaration const & entity )
      : context_( context ),
        entity_( entity ),
        constructor_( constructorIn( entity.scope, entity ) ) {}

  MemberTexts texts() {
    initialise();
    for( auto const & m : entity_.members )
      add( m );
    for( auto const & p : constructor_ )
      parameters_.push_back( parameterEntry( p ) );
    if( constructor_.empty() )
      parameters_.push_back( parameterEntry( { "name", {} } ) );
    return { declared(), defined() };
  }

 private:
  std::string declared() const {
    std::string const base = entity_.base.declaration ? context_.bare( entity_.base ) : "";
    std::string const & type = entity_.name;
    return page(
        "entity",
        { { "doc", entity_.doc },
          { "Type", type },
          { "scope", entity_.scope },
          { "bases", base.empty() ? type : type + ", " + base },
          { "explicit", constructor_.size() < 2 ? "explicit " : "" },
          { "parameters", parameterList( context_, constructor_ ) },
          { "attributes", stacked( attributes_ ) },
          { "notifiee", notifiee( base.empty() ? type : type + ", " + base + "::NotifieeConst" ) },
          { "constructor", stacked( parameters_, ",\n" ) },
          { "table", stacked( table_, ",\n" ) },
          { "numAttributes", std::to_string( table_.size() ) },
          { "reactors", reactors_.empty()
                            ? ""
                            : "static constexpr auto koiReactors() { return std::tuple{ " +
                                  stacked( reactors_, ", " ) + " }; }" },
          { "factory", lowerCamel( type ) + "Factory" },
          { "cells", stacked( cells_, "\n" ) } } );
  }

  std::string defined() const {
    return page( "entityBody", { { "Type", entity_.name },
                                 { "parameters", parameterList( context_, constructor_ ) },
                                 { "arguments", argumentList( constructor_ ) },
                                 { "initialisers", stacked( initialisers_, ", " ) },
                                 { "attributes", stacked( bodies_ ) },
                                 { "factory", lowerCamel( entity_.name ) + "Factory" } } );
  }

  /// What the base gets: its own parameters, or else the name.
  void initialise() {
    std::string base;
    if( entity_.base.declaration )
      base = argumentList( context_.constructorOf( *entity_.base.declaration ) );
    if( base.empty() || base == "name" ) {
      int const name = Context::nameIndex( constructor_ );
      base = constructor_.empty() || name >= 0 ? "name"
                                               : "Koi::nameOf( " + constructor_.front().name + " )";
    }
    initialisers_.push_back( "EntityOf( " + base + " )" );
  }

  void add( Member const & m ) {
    switch( m.kind ) {
      case Member::param:
        addParam( m );
        break;
      case Member::constant:
        attributes_.push_back( constantText( context_, m ) );
        table_.push_back( readEntry( "constant< Self >", m.name ) );
        break;
      case Member::function:
        attributes_.push_back( memberFunctionText( context_, m ) );
        break;
      case Member::derived:
        addDerived( m );
        break;
      case Member::child:
        addChild( m );
        break;
      case Member::reactor:
        addReactor( m );
        break;
      case Member::hidden:
        cells_.push_back( "/// " + m.doc + "\n" + cellText( context_, m ) );
        break;
      case Member::table:
        addTable( m );
        break;
      default:
        addTexts( attributeTexts( context_, { entity_, true }, m ) );
        addState( m );
    }
  }

  void addParam( Member const & m ) {
    if( m.name == "name" && m.type.primitive == Primitive::name )
      return;  // every entity has that one
    if( m.settable ) {
      initialisers_.push_back( m.name + "_( " + m.name + " )" );
      addTexts( attributeTexts( context_, { entity_, true }, m ) );
      addState( m );
      return;
    }
    attributes_.push_back( paramText( context_, m ) );
    initialisers_.push_back( "_" + m.name + "( " + m.name + " )" );
    table_.push_back( tableEntry( m.name, { "_" + m.name } ) );
    cells_.push_back( paramCellText( context_, m ) );
  }

  void addDerived( Member const & m ) {
    table_.push_back( readEntry( "computed", m.name ) );
    Fill fill{ { "doc", m.doc }, { "attr", m.name }, { "type", givenType( context_, m.type ) } };
    if( m.source.empty() ) {
      attributes_.push_back( page( "entityComputed", fill ) );
      return;
    }
    fill["source"] = m.source;
    fill["field"] = m.sourceField;
    attributes_.push_back( page( "entityDerived", fill ) );
  }

  void addTexts( MemberTexts const & texts ) {
    attributes_.push_back( texts.declared );
    bodies_.push_back( texts.defined );
  }

  void addChild( Member const & m ) {
    Fill declared{ { "attr", m.name }, { "type", givenType( context_, m.type ) } };
    fillParameters( context_, entity_.scope, m, 0, declared );
    Fill defined = declared;
    declared["doc"] = m.doc;
    defined["Owner"] = entity_.name;
    defined["on"] = ", " + callback( m );
    fillArguments( entity_.scope, m, 0, defined );
    addTexts( { page( "entityChild", declared ), page( "entityChildBody", defined ) } );
    addState( m );
  }

  void addReactor( Member const & m ) {
    attributes_.push_back( page(
        "entityReactor",
        { { "doc", m.doc }, { "attr", m.name }, { "type", givenType( context_, m.type ) } } ) );
    reactors_.push_back( "&" + entity_.name + "::" + m.name + "_" );
    cells_.push_back( cellText( context_, m ) );
  }

  void addTable( Member const & m ) {
    std::string const Attr = capital( m.name ), value = context_.bare( m.type );
    Fill fill{ { "attr", m.name },
               { "Attr", Attr },
               { "type", value },
               { "key", context_.argument( m.key ) } };
    Fill declared = fill, defined = fill;
    declared["doc"] = m.doc;
    declared["collection"] = tableType( context_, m );
    defined["Owner"] = entity_.name;
    addTexts( { page( "entityTable", declared ), page( "entityTableBody", defined ) } );
    callbacks_.push_back(
        page( "entityCallbackTable", { { "Attr", Attr },
                                       { "key", fill["key"] },
                                       { "index", std::to_string( table_.size() ) },
                                       { "control", std::to_string( table_.size() + 1 ) } } ) );
    table_.push_back( "Koi::table( \"" + m.name + "\", &Self::" + m.name + "_ )" );
    table_.push_back( "Koi::tableControl( \"" + m.name + "Control\", &Self::" + m.name + "_ )" );
    cells_.push_back( tableType( context_, m ) + " " + m.name + "_{ *this, \"" + m.name + "\", " +
                      callback( m ) + ", " + callback( m ) + "Control };" );
  }

  void addState( Member const & m ) {
    Fill fill{ { "Attr", capital( m.name ) }, { "index", std::to_string( table_.size() ) } };
    if( m.isCollection() ) {
      fill["key"] = context_.argument( m.key );
      callbacks_.push_back( page( "entityCallbackKeyed", fill ) );
    } else {
      callbacks_.push_back( page( "entityCallback", fill ) );
    }
    Texts pointers{ m.name + "_", m.name + "Is" };
    if( m.storedFirst )
      pointers.push_back( m.bound );
    if( m.isCollection() || m.kind == Member::child )
      pointers.push_back( m.name + "Del" );
    table_.push_back( tableEntry( m.name, pointers ) );
    cells_.push_back( cellText( context_, m ) );
  }

  std::string notifiee( std::string const & bases ) const {
    if( callbacks_.empty() )
      return page( "entityNotifieeEmpty", { { "bases", bases } } );
    return page( "entityNotifiee",
                 { { "bases", bases }, { "callbacks", stacked( callbacks_, "\n" ) } } );
  }

  /// The attribute's name, its cell, its mutators.
  std::string tableEntry( std::string const & name, Texts const & pointers ) const {
    std::string text = "Koi::attribute( \"" + name + "\"";
    for( std::string const & pointer : pointers )
      text += ", &Self::" + pointer;
    return text + " )";
  }

  /// The name, and the function that gives it.
  std::string readEntry( std::string const & kind, std::string const & name ) const {
    return "Koi::" + kind + "( \"" + name + "\", &Self::" + name + " )";
  }

  std::string parameterEntry( EntityParameter const & p ) const {
    bool const isInitial = p.member && p.member->settable;
    return ( isInitial ? "Koi::initial( \"_" : "Koi::parameter( \"_" ) + p.name + "\", &" +
           entity_.name + "::" + p.name + " )";
  }

  Context const & context_;
  Declaration const & entity_;
  std::vector< EntityParameter > const constructor_;
  Texts initialisers_, attributes_, bodies_, callbacks_, parameters_, table_, reactors_, cells_;
};

}  // namespace

std::string givenType( Context const & context, TypeUse const & type ) {
  return context.isPointer( type ) ? angled( "Koi::Ptr", context.bare( type ) )
                                   : context.cpp( type );
}

std::string givenArgument( Context const & context, TypeUse const & type ) {
  return context.isPointer( type ) ? givenType( context, type ) + " const &"
                                   : context.argument( type );
}

std::string parameterList( Context const & context,
                           std::vector< EntityParameter > const & parameters, std::size_t skip ) {
  if( parameters.empty() )
    return skip ? "" : "Koi::Name const & name";
  Texts texts;
  for( std::size_t i = skip; i < parameters.size(); ++i )
    texts.push_back( givenArgument( context, parameters[i].type ) + " " + parameters[i].name );
  return stacked( texts, ", " );
}

std::string argumentList( std::vector< EntityParameter > const & parameters, std::size_t skip ) {
  if( parameters.empty() )
    return skip ? "" : "name";
  Texts texts;
  for( std::size_t i = skip; i < parameters.size(); ++i )
    texts.push_back( parameters[i].name );
  return stacked( texts, ", " );
}

std::string refusal( Declaration const & owner, Member const & member,
                     std::string const & argument ) {
  if( member.notNull )
    return "Koi::refuseNull( " + argument + ", \"null _" + member.name +
           " parameter to mutator for " + owner.fullName() + "::" + member.name +
           " not allowed\" );";
  if( !member.maxBytes.empty() )
    return "Koi::refuseLonger( " + argument + ", " + member.maxBytes + ", \"" + owner.name +
           "::bytes > " + member.maxBytes + " not allowed\" );";
  if( !member.bound.empty() )
    return "Koi::refuseMore( " + argument + ", " + member.bound + "(), \"" + owner.name +
           "::" + member.name + " > " + owner.name + "::" + member.bound + " not allowed\" );";
  return {};
}

std::string paramText( Context const & context, Member const & member ) {
  return page(
      "entityParam",
      { { "doc", member.doc },
        { "attr", member.name },
        { "type", givenType( context, member.type ) },
        { "read", member.name + ( member.type.hold == TypeUse::weak ? ".ptr()" : "" ) } } );
}

std::string paramCellText( Context const & context, Member const & member ) {
  return cellType( context, member.type ) + " const _" + member.name + ";";
}

MemberTexts attributeTexts( Context const & context, MemberOwner const & owner,
                            Member const & member ) {
  return member.isCollection() ? collectionTexts( context, owner, member )
                               : scalarTexts( context, owner, member );
}

std::string cellText( Context const & context, Member const & member ) {
  if( member.isCollection() && holdsInnerReactors( member ) )
    return angled( "Koi::InnerReactors", collectionType( context, member ) ) + " " + member.name +
           "_{ this };";
  if( member.isCollection() )
    return collectionType( context, member ) + " " + member.name + "_;";
  std::string const initial = context.initial( member.initial );
  std::string const cell = cellType( context, member.type ) + " " + member.name + "_";
  if( context.isPointer( member.type ) )
    return cell + ";";
  return cell + ( initial.empty() ? "{};" : " = " + initial + ";" );
}

std::string entityText( Context const & context, Declaration const & declaration ) {
  return EntityText( context, declaration ).texts().declared;
}

std::string entityBodyText( Context const & context, Declaration const & declaration ) {
  return EntityText( context, declaration ).texts().defined;
}

std::string genericEntityText( Context const & context, Declaration const & declaration ) {
  Texts forwards;
  for( auto const * d = &declaration; d && !d->foreign; d = d->base.declaration )
    for( auto const & m : d->members ) {
      if( !isTold( m ) )
        continue;
      Fill fill{ { "Attr", capital( m.name ) } };
      if( m.isKeyed() )
        fill["key"] = context.argument( spelledIn( declaration.scope, m.key, d->scope ) );
      forwards.push_back( page( m.kind == Member::table ? "entityGenericCallbackTable"
                                : m.isCollection()      ? "entityGenericCallbackKeyed"
                                                        : "entityGenericCallback",
                                fill ) );
    }
  return page( "entityGeneric", { { "scope", declaration.scope },
                                  { "Type", declaration.name },
                                  { "forwards", stacked( forwards, "" ) } } );
}

}  // namespace Koigen
