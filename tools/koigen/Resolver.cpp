#include "Resolver.h"

#include <algorithm>

namespace Koigen {
namespace {

Primitive primitiveOf( std::string name ) {
  // What is declared for a body in C++ may be spelled as it is there.
  static std::set< std::string > const numbers = { "Koi::U8", "Koi::U16", "Koi::U32", "Koi::U64",
                                                   "Koi::I32" };
  if( numbers.count( name ) )
    name = ( name[5] == 'I' ? "i" : "u" ) + name.substr( 6 );
  for( auto p : { Primitive::u8, Primitive::u16, Primitive::u32, Primitive::u64, Primitive::i32,
                  Primitive::boolean, Primitive::seconds, Primitive::string8, Primitive::name } )
    if( name == nameOf( p ) )
      return p;
  return Primitive::none;
}

std::string at( Place const & place ) {
  return place.file + ":" + std::to_string( place.line ) + ":" + std::to_string( place.column );
}

bool isType( Declaration const & d ) { return d.kind != Declaration::function; }

}  // namespace

Resolver::Resolver( Model & model, Findings & findings ) : model_( model ), findings_( findings ) {
  for( auto const & module : model_.modules )
    for( auto const & d : module.declarations ) {
      enter( d );
      for( auto at = d.scope.find( "::" ); at != d.scope.npos; at = d.scope.find( "::", at + 2 ) )
        scopes_.insert( d.scope.substr( 0, at ) );
      scopes_.insert( d.scope );
    }
  for( auto const & module : model_.modules )
    for( auto const & d : module.declarations )
      if( model_.types.count( d.scope ) )
        findings_.add( d.place, "namespace '" + d.scope + "' is also a type" );
}

void Resolver::enter( Declaration const & d ) {
  auto const claim = [&]( Place const & place, std::string const & name, char const * what ) {
    auto const [it, fresh] = names_.emplace( d.scope + "::" + name, place );
    if( !fresh )
      findings_.add( place, std::string( what ) + " '" + d.scope + "::" + name +
                                "' is already declared at " + at( it->second ) );
    return fresh;
  };
  if( isType( d ) ) {
    if( claim( d.place, d.name, "type" ) )
      model_.types[d.fullName()] = &d;
    for( auto const & e : d.enumerators )
      claim( e.place, e.name, "enumerator" );
    return;
  }
  // Functions may share a name as long as their parameters differ.
  auto const & f = d.members.front();
  std::string signature = f.name + "(";
  for( auto const & p : f.parameters )
    signature += p.type.text + ",";
  claim( f.place, signature + ")", "function" );
}

Declaration const * Resolver::lookup( std::string const & name, Declaration const & from ) const {
  for( std::string scope = from.scope;; ) {
    auto const it = model_.types.find( scope.empty() ? name : scope + "::" + name );
    if( it != model_.types.end() )
      return it->second;
    if( scope.empty() )
      return nullptr;
    auto const cut = scope.rfind( "::" );
    scope = cut == scope.npos ? "" : scope.substr( 0, cut );
  }
}

bool Resolver::resolve( TypeUse & use, Declaration const & from, Need need ) {
  use.primitive = primitiveOf( use.text );
  if( use.primitive != Primitive::none ) {
    if( use.hold == TypeUse::whole )
      return true;
    findings_.add( use.place, "'" + use.text + "' is a value: only entities are pointed to" );
    return false;
  }
  if( use.isOfAnyType() && need == pointer )
    return true;
  auto const * found = lookup( use.text, from );
  // What an imported module only names may be of one that nobody here uses.
  if( !found && from.module->imported && ( need == named || need == pointer ) )
    return false;
  if( !found ) {
    findings_.add( use.place, "there is no type '" + use.text + "'" );
    return false;
  }
  bool const reactor = found->kind == Declaration::reactor;
  bool const inReactor = from.kind == Declaration::reactor &&
                         ( use.hold == TypeUse::own || use.hold == TypeUse::weak );
  if( reactor && need != itsReactor && !inReactor ) {
    findings_.add( use.place, "'" + use.text +
                                  "' is a reactor: a reactor holds it by 'own' or 'weak', an "
                                  "entity by 'reactor'" );
    return false;
  }
  bool const pointed = reactor || found->kind == Declaration::entity;
  if( !pointed && use.hold != TypeUse::whole ) {
    findings_.add( use.place, "'" + use.text + "' is a value: only entities are pointed to" );
    return false;
  }
  if( !visible( use, from, *found, pointed || need == named ? need : complete ) )
    return false;
  use.declaration = found;
  use.hidden = isHidden( use.text, from, *found );
  return true;
}

/// A model looks for a whole name in each namespace; C++ goes no further out than to the first one
/// that has a namespace or type of the name's first part.
bool Resolver::isHidden( std::string const & name, Declaration const & from,
                         Declaration const & found ) const {
  auto const cut = name.find( "::" );
  if( cut == name.npos )
    return false;
  for( std::string scope = from.scope; !scope.empty(); ) {
    std::string const inside = scope + "::";
    if( inside + name == found.fullName() )
      return false;
    std::string const first = inside + name.substr( 0, cut );
    if( scopes_.count( first ) || model_.types.count( first ) )
      return true;
    auto const up = scope.rfind( "::" );
    scope = up == scope.npos ? "" : scope.substr( 0, up );
  }
  return false;
}

bool Resolver::visible( TypeUse const & use, Declaration const & from, Declaration const & found,
                        Need need ) {
  bool const here = found.module == from.module;
  bool const used =
      here || std::any_of( from.module->uses.begin(), from.module->uses.end(),
                           [&]( Uses const & u ) { return u.module == found.module; } );
  if( used )
    needed_.emplace( from.module, found.module );
  bool const before = !here || found.index < from.index;
  if( used && before )
    return true;
  if( need != complete ) {
    auto & forward = forward_[from.module];
    bool const itself = &found == &from;
    if( !itself && std::find( forward.begin(), forward.end(), &found ) == forward.end() )
      forward.push_back( &found );
    return true;
  }
  if( !used )
    findings_.add( use.place, "'" + found.fullName() + "' is of module '" + found.module->name +
                                  "': write 'uses " + found.module->name + ";'" );
  else if( &found == &from )
    findings_.add( use.place, "'" + found.name + "' contains itself" );
  else
    findings_.add( use.place,
                   "'" + found.name + "' is declared below: it must stand before its use" );
  return false;
}

void Resolver::finish() {
  for( auto & module : model_.modules ) {
    module.forward = forward_[&module];
    for( auto const & u : module.uses )
      if( !module.imported && u.module && !needed_.count( { &module, u.module } ) )
        findings_.add( u.place, "nothing of module '" + u.name + "' is needed" );
  }
}

bool isHashable( TypeUse const & type ) {
  if( type.primitive != Primitive::none )
    return true;
  return type.declaration && type.declaration->kind <= Declaration::enumeration &&
         !type.declaration->unhashed;
}

bool isOrdered( TypeUse const & type ) {
  if( type.primitive != Primitive::none )
    return true;
  auto const * d = type.declaration;
  return d && ( d->kind == Declaration::wrapper || d->kind == Declaration::enumeration ||
                ( d->kind == Declaration::structure && d->inOrder ) );
}

bool same( TypeUse const & a, TypeUse const & b ) {
  return a.primitive == b.primitive && a.declaration == b.declaration && a.hold == b.hold;
}

std::string described( TypeUse const & type ) {
  static constexpr char const * holds[] = { "", "ref ", "weak ", "own " };
  return holds[type.hold] + ( type.declaration ? type.declaration->fullName() : type.text );
}

}  // namespace Koigen
