// CheckMembers.cpp: what holds for the members of entities and reactors alike, and for all names.
#include <algorithm>

#include "Checks.h"
#include "Context.h"

namespace Koigen {
namespace {

/// What the member is called by and what is generated beside it.
std::vector< std::string > generated( Member const & m ) {
  bool const isTable = m.kind == Member::table;
  bool const each = m.isKeyed() || m.kind == Member::watchEach;
  bool const single = m.kind == Member::child || m.kind == Member::reactor;
  bool const mutated =
      each || single || m.kind == Member::scalar || m.kind == Member::watch || m.settable;
  std::vector< std::string > names = { m.name };
  auto const add = [&]( bool when, std::initializer_list< char const * > suffixes ) {
    for( auto const * suffix : suffixes )
      if( when )
        names.push_back( m.name + suffix );
  };
  add( mutated, { "Is" } );
  add( each || single || m.kind == Member::watch, { "Del" } );
  add( each, { "DelAll" } );
  add( m.isKeyed(), { "Iterator", "Notify" } );
  add( isTable, { "Commit", "NotifyCollection", "Control" } );
  if( isTable )
    names.push_back( "new" + capital( m.name ) );
  add( m.kind == Member::queue, { "Enq", "Deq", "Metadata" } );
  add( m.kind == Member::watchEach, { "Keys" } );
  return names;
}

bool mayOverload( Member const & a, Member const & b ) {
  auto const isFunction = []( Member const & m ) {
    return m.kind == Member::function || m.kind == Member::constructor;
  };
  return isFunction( a ) && isFunction( b ) && a.name == b.name &&
         !std::equal( a.parameters.begin(), a.parameters.end(), b.parameters.begin(),
                      b.parameters.end(), []( auto const & x, auto const & y ) {
                        return x.type.text == y.type.text && x.type.hold == y.type.hold;
                      } );
}

/// Names that the contract of values or of entities uses itself.
bool isTaken( Declaration const & d, Member const & m ) {
  if( m.kind == Member::constructor )
    return false;
  auto const among = [&]( std::initializer_list< char const * > names ) {
    return std::find( names.begin(), names.end(), m.name ) != names.end();
  };
  switch( d.kind ) {
    case Declaration::wrapper:
      return among( { "hash", "value" } );
    case Declaration::structure:
      return among( { "hash" } );
    case Declaration::entity:
      if( m.kind == Member::param && m.name == "name" )
        return m.type.primitive != Primitive::name;
      return among( { "name", "parent", "fullName" } );
    case Declaration::reactor:
      return among( { "hasNotificationActive", "hasNotificationActiveIs", "isZombie", "fwkType" } );
    default:
      return false;
  }
}

bool needsDoc( Member const & m ) { return m.kind != Member::start && m.kind != Member::cleanup; }

void checkAgainstBases( Checks checks, Declaration const & d, Member const & m ) {
  auto const * base = d.base.declaration;
  auto const * there = base ? Context::memberOf( *base, m.name ) : nullptr;
  bool foreign = false;
  for( auto const * b = base; b; b = b->base.declaration )
    foreign |= b->foreign;
  if( m.isOverride && !foreign && !( there && ( there->isVirtual || there->isOverride ) ) )
    checks.findings.add( m.place, "'" + m.name + "' overrides no virtual function of a base" );
  else if( there && !m.isOverride )
    checks.findings.add( m.place,
                         "'" + m.name + "' is already a member of the base '" + d.base.text + "'" );
}

/// Whether a child can be built from a key and what its other parameters are.
void checkOwned( Checks checks, Member const & m ) {
  if( m.type.isOfAnyType() ) {
    if( m.key.primitive != Primitive::name )
      checks.findings.add( m.key.place, "the key of entities of any type is a Koi::Name" );
    return;
  }
  auto const parameters = Context::constructorOf( *m.type.declaration );
  bool const byName =
      m.key.primitive == Primitive::name && m.type.declaration->kind == Declaration::entity;
  if( parameters.empty() ? byName : same( parameters.front().type, m.key ) )
    return;
  checks.findings.add( m.type.place, "the constructor parameters of '" + m.type.text +
                                         "' do not begin with the key '" + m.key.text + "'" );
}

/// "by address": the field of the value that is its key.
void checkBy( Checks checks, Member const & m ) {
  auto const * d = m.type.declaration;
  if( m.type.hold != TypeUse::whole || !d || d->kind != Declaration::structure || d->foreign )
    return checks.findings.add( m.byPlace, "'by' is for collections of structures" );
  auto const * field = Context::memberOf( *d, m.byField );
  if( !field || field->kind != Member::field )
    checks.findings.add( m.byPlace, "'" + m.type.text + "' has no field '" + m.byField + "'" );
  else if( !same( field->type, m.key ) )
    checks.findings.add(
        m.byPlace, "the field '" + m.byField + "' is not of the key's type '" + m.key.text + "'" );
}

}  // namespace

void checkMemberNames( Checks checks, Declaration const & d ) {
  if( d.kind == Declaration::function )
    return checkName( d.members.front().place, d.members.front().name, checks.findings );
  std::map< std::string, Member const * > taken;
  for( auto const & m : d.members ) {
    if( needsDoc( m ) )
      checkDoc( m.place, m.name, m.doc, checks.findings );
    if( m.kind == Member::constructor ) {
      for( auto const & other : d.members )
        if( &other < &m && other.kind == m.kind && !mayOverload( other, m ) )
          checks.findings.add( m.place, "'" + d.name + "' has this constructor already" );
      continue;
    }
    checkName( m.place, m.name, checks.findings );
    if( m.name[0] >= 'A' && m.name[0] <= 'Z' )
      checks.findings.add( m.place, "'" + m.name + "' begins with a capital, which is for types" );
    if( isTaken( d, m ) )
      checks.findings.add( m.place, "'" + m.name + "' is a name of every " +
                                        ( d.kind == Declaration::entity    ? "entity"
                                          : d.kind == Declaration::reactor ? "reactor"
                                                                           : "value" ) );
    if( d.kind == Declaration::entity )
      checkAgainstBases( checks, d, m );
    for( auto const & name : generated( m ) ) {
      auto const [it, fresh] = taken.emplace( name, &m );
      if( fresh || mayOverload( *it->second, m ) )
        continue;
      if( it->second->name == m.name )
        checks.findings.add( m.place, "'" + d.name + "' has a member '" + m.name + "' already" );
      else
        checks.findings.add( m.place, "'" + m.name + "' and '" + it->second->name +
                                          "' would both generate '" + name + "'" );
      break;
    }
  }
}

void checkAttribute( Checks checks, Declaration const & d, Member & m ) {
  auto & findings = checks.findings;
  if( m.type.hold == TypeUse::own )
    return findings.add( m.type.place, "an owned entity is declared by 'child'" );
  bool const pointer = m.type.hold != TypeUse::whole;
  if( !checks.resolver.resolve( m.type, d, pointer ? Resolver::pointer : Resolver::complete ) )
    return;
  if( !pointer && m.type.declaration && m.type.declaration->kind == Declaration::entity )
    return findings.add( m.type.place, "an entity is held by 'ref' or 'weak'" );
  checkInitial( checks, d, m, m.initial, m.type );
  if( m.notNull && !pointer )
    findings.add( m.place, "'not null' is for pointers" );
  if( !m.then.empty() &&
      ( d.kind != Declaration::reactor || pointer || !m.bound.empty() || !m.maxBytes.empty() ) )
    findings.add( m.place, "'then' is for values of a reactor" );
  if( m.storedFirst && m.bound.empty() )
    findings.add( m.place, "'stored before the check' needs a 'max'" );
  if( !m.maxBytes.empty() ) {
    auto const number = integerOf( m.maxBytes );
    if( m.type.primitive != Primitive::string8 )
      findings.add( m.boundPlace, "'bytes' are counted of a Koi::String8" );
    else if( !number || !fits( *number, Primitive::u32 ) )
      findings.add( m.boundPlace, "'" + m.maxBytes + "' is not a length" );
  }
  if( m.bound.empty() )
    return;
  auto const * bound = Context::memberOf( d, m.bound );
  if( !isWholeNumber( m.type.primitive ) )
    findings.add( m.boundPlace, "'max' with a constant is for whole numbers" );
  else if( !bound || bound->kind != Member::constant )
    findings.add( m.boundPlace, "there is no constant '" + m.bound + "'" );
  else if( bound->type.text != m.type.text )
    findings.add( m.boundPlace, "'" + m.bound + "' is not of type '" + m.type.text + "'" );
}

void checkParam( Checks checks, Declaration const & d, Member & m ) {
  if( m.type.hold == TypeUse::own )
    return checks.findings.add( m.type.place, "a parameter is a value, a 'ref' or a 'weak'" );
  bool const pointer = m.type.hold != TypeUse::whole;
  if( checks.resolver.resolve( m.type, d, pointer ? Resolver::pointer : Resolver::complete ) &&
      !pointer && m.type.declaration && m.type.declaration->kind == Declaration::entity )
    checks.findings.add( m.type.place, "an entity is held by 'ref' or 'weak'" );
  bool const isName = d.kind == Declaration::entity &&
                      ( m.name == "name" || Context::constructorOf( d ).front().member == &m );
  if( m.settable && ( pointer || isName ) )
    checks.findings.add( m.place,
                         "only a value, which its entity is not called after, is 'settable'" );
}

/// A table may hold values of a module that this one does not use: they are only named.
void checkTable( Checks checks, Declaration const & d, Member & m ) {
  auto & findings = checks.findings;
  bool const keyFound = checks.resolver.resolve( m.key, d, Resolver::complete );
  if( m.type.hold != TypeUse::whole )
    return findings.add( m.type.place, "a table holds values" );
  if( !checks.resolver.resolve( m.type, d, Resolver::named ) )
    return;
  auto const * value = m.type.declaration;
  if( !value || !value->inTable )
    return findings.add( m.type.place, "'" + m.type.text + "' is no value of a table" );
  auto const key = std::find_if( value->members.begin(), value->members.end(),
                                 []( auto const & f ) { return f.kind == Member::field; } );
  if( key == value->members.end() || !keyFound )
    return;  // of which is told elsewhere
  // Its module may not be checked yet.
  TypeUse first = key->type;
  if( !first.declaration && first.primitive == Primitive::none )
    first.declaration = checks.resolver.lookup( first.text, *value );
  bool const isSame = first.declaration || first.primitive != Primitive::none
                          ? same( first, m.key )
                          : first.text == m.key.text;
  if( !isSame )
    findings.add( m.key.place,
                  "the key of '" + m.type.text + "' is of type '" + described( first ) + "'" );
}

void checkCollection( Checks checks, Declaration const & d, Member & m ) {
  auto & findings = checks.findings;
  bool const keyFound = checks.resolver.resolve( m.key, d, Resolver::complete );
  bool const pointer = m.type.hold == TypeUse::ref || m.type.hold == TypeUse::weak;
  if( !m.type.isOfAnyType() &&
      !checks.resolver.resolve( m.type, d, pointer ? Resolver::pointer : Resolver::complete ) )
    return;
  if( m.type.hold == TypeUse::whole && m.type.declaration &&
      m.type.declaration->kind == Declaration::entity )
    return findings.add( m.type.place, "a collection of entities says 'own', 'ref' or 'weak'" );
  if( m.notNull && !pointer )
    findings.add( m.place, "'not null' is for pointers" );
  if( m.storedFirst )
    findings.add( m.place, "'stored before the check' is for attributes" );
  if( m.isVirtual )
    findings.add( m.place, "'virtual' is for attributes and functions" );
  if( !m.then.empty() )
    findings.add( m.place, "'then' is for values of a reactor" );
  if( !keyFound )
    return;
  if( m.key.declaration && m.key.declaration->kind == Declaration::entity )
    return findings.add( m.key.place, "a key is a value, not an entity" );
  if( m.kind == Member::queue ) {
    if( m.key.primitive != Primitive::u8 && m.key.primitive != Primitive::u16 &&
        m.key.primitive != Primitive::u32 )
      findings.add( m.key.place, "the index of a queue is a u8, u16 or u32" );
    if( m.type.hold != TypeUse::whole || !m.byField.empty() )
      findings.add( m.type.place, "a queue holds values" );
    return;
  }
  if( m.kind == Member::hashed && !isHashable( m.key ) )
    findings.add( m.key.place, "the key type '" + m.key.text + "' has no hash" );
  if( m.kind == Member::ordered && !isOrdered( m.key ) )
    findings.add( m.key.place, "the key type '" + m.key.text + "' is not ordered" );
  if( m.type.hold == TypeUse::own )
    checkOwned( checks, m );
  if( !m.byField.empty() )
    checkBy( checks, m );
}

}  // namespace Koigen
