// CheckEntities.cpp: what an entity and a reactor must fulfil beyond their members' own rules.
#include "Checks.h"
#include "Context.h"

namespace Koigen {
namespace {

void checkBase( Checks checks, Declaration & d ) {
  if( d.base.text.empty() )
    return;
  if( !checks.resolver.resolve( d.base, d, Resolver::complete ) )
    return;
  if( d.base.declaration && d.base.declaration->kind == Declaration::entity )
    return;
  checks.findings.add( d.base.place, "'" + d.base.text + "' is no entity to extend" );
  d.base.declaration = nullptr;
}

/// The first parameter names an entity that has no name among its parameters.
void checkName( Checks checks, Declaration const & d ) {
  auto const parameters = Context::constructorOf( d );
  if( parameters.empty() || Context::nameIndex( parameters ) >= 0 )
    return;
  auto const hold = parameters.front().type.hold;
  if( hold == TypeUse::ref || hold == TypeUse::weak )
    checks.findings.add( d.place, "'" + d.name +
                                      "' takes its name from its first parameter, which "
                                      "must be a value" );
}

void checkDerived( Checks checks, Declaration const & d, Member & m ) {
  if( m.type.hold != TypeUse::whole )
    return checks.findings.add( m.type.place, "a derived attribute is a value, not a pointer" );
  if( !checks.resolver.resolve( m.type, d, Resolver::complete ) || m.source.empty() )
    return;
  auto const * source = Context::memberOf( d, m.source );
  if( !source || ( source->kind != Member::scalar && source->kind != Member::param ) )
    return checks.findings.add( m.boundPlace, "there is no attribute '" + m.source + "'" );
  auto const * structure = source->type.declaration;
  auto const * field = structure && source->type.hold == TypeUse::whole
                           ? Context::memberOf( *structure, m.sourceField )
                           : nullptr;
  if( !field || field->kind != Member::field )
    checks.findings.add( m.boundPlace, "'" + m.source + "' has no field '" + m.sourceField + "'" );
  else if( !same( field->type, m.type ) )
    checks.findings.add( m.boundPlace, "'" + m.source + "." + m.sourceField + "' is of type '" +
                                           described( field->type ) + "'" );
}

void checkEntityMember( Checks checks, Declaration & d, Member & m ) {
  switch( m.kind ) {
    case Member::scalar:
    case Member::hidden:
      return checkAttribute( checks, d, m );
    case Member::param:
      return checkParam( checks, d, m );
    case Member::constant:
      return checkConstant( checks, d, m );
    case Member::derived:
      return checkDerived( checks, d, m );
    case Member::function:
      return checkFunction( checks, d, m );
    case Member::table:
      return checkTable( checks, d, m );
    case Member::child:
      checks.resolver.resolve( m.type, d, Resolver::complete );
      return;
    case Member::reactor:
      if( checks.resolver.resolve( m.type, d, Resolver::itsReactor ) &&
          m.type.declaration->kind != Declaration::reactor )
        checks.findings.add( m.type.place, "'" + m.type.text + "' is no reactor" );
      return;
    default:
      return checkCollection( checks, d, m );
  }
}

/// What a watched entity may call: the attribute that the callback is named after, and its key.
void checkCallback( Checks checks, Declaration const & d, Member const & watch, Callback & c ) {
  auto & findings = checks.findings;
  if( c.keyed && !checks.resolver.resolve( c.key, d, Resolver::complete ) )
    return;
  if( !c.name.starts_with( "on" ) || c.name.size() < 3 || c.name[2] < 'A' || c.name[2] > 'Z' )
    return findings.add( c.place, "a callback is named after an attribute: 'onAttribute'" );
  auto const * watched = watch.type.declaration;
  auto const * attribute = Context::memberOf( *watched, lowerCamel( c.name.substr( 2 ) ) );
  if( !attribute ) {
    for( auto const * w = watched; w; w = w->base.declaration )
      if( w->foreign )
        return;  // a foreign entity's attributes are not known here
    return findings.add( c.place,
                         "'" + c.name + "' names no attribute of '" + watch.type.text + "'" );
  }
  c.attribute = attribute;
  bool const collection = attribute->kind == Member::hashed || attribute->kind == Member::ordered ||
                          attribute->kind == Member::queue;
  bool const isTable = attribute->kind == Member::table;  // told of by key, and as a whole
  bool const changes = collection || isTable || attribute->settable ||
                       attribute->kind == Member::scalar || attribute->kind == Member::child;
  if( !changes )
    findings.add( c.place, "'" + attribute->name + "' of '" + watch.type.text + "' never changes" );
  else if( !collection && !isTable && c.keyed )
    findings.add( c.key.place, "'" + attribute->name + "' is no collection and has no key" );
  else if( collection && !c.keyed )
    findings.add( c.place, "'" + attribute->name + "' is told of by key: write '" + c.name + "( " +
                               described( attribute->key ) + " )'" );
  else if( c.keyed && !same( c.key, attribute->key ) )
    findings.add( c.key.place, "the key of '" + attribute->name + "' is of type '" +
                                   described( attribute->key ) + "'" );
}

void checkWatch( Checks checks, Declaration & d, Member & m ) {
  auto & findings = checks.findings;
  if( m.kind == Member::watchEach && m.key.text.empty() )
    findings.add( m.place, "'watch each' needs a key" );
  if( m.kind == Member::watch && !m.key.text.empty() )
    findings.add( m.key.place, "'watch' has no key: write 'watch each'" );
  if( !m.key.text.empty() && checks.resolver.resolve( m.key, d, Resolver::complete ) &&
      !isHashable( m.key ) && !isOrdered( m.key ) )
    findings.add( m.key.place, "the key type '" + m.key.text + "' is neither hashed nor ordered" );
  if( m.type.hold != TypeUse::whole )
    return findings.add( m.type.place, "a watched entity is held anyway: leave out how" );
  if( !checks.resolver.resolve( m.type, d, Resolver::complete ) )
    return;
  if( !m.type.declaration || m.type.declaration->kind != Declaration::entity )
    return findings.add( m.type.place, "'" + m.type.text + "' is no entity to watch" );
  for( auto & c : m.callbacks )
    checkCallback( checks, d, m, c );
}

void checkOnce( Checks checks, Declaration const & d, Member::Kind kind, char const * what ) {
  int count = 0;
  bool needsStart = false;  // one that watches nothing only keeps what it is given
  for( auto const & m : d.members ) {
    needsStart |= m.kind == Member::watch || m.kind == Member::watchEach;
    if( m.kind == kind && ++count > 1 )
      checks.findings.add( m.place, "'" + d.name + "' has a " + what + " handler already" );
  }
  if( count == 0 && kind == Member::start && needsStart )
    checks.findings.add( d.place, "'" + d.name + "' has no start handler" );
}

}  // namespace

void checkEntity( Checks checks, Declaration & d ) {
  for( auto & p : d.parameters ) {
    if( p.name.empty() )
      checks.findings.add( p.place, "a parameter of a foreign entity has a name" );
    else
      Koigen::checkName( p.place, p.name, checks.findings );
    bool const pointer = p.type.hold == TypeUse::ref;
    checks.resolver.resolve( p.type, d, pointer ? Resolver::pointer : Resolver::complete );
  }
  checkBase( checks, d );
  for( auto & m : d.members )
    checkEntityMember( checks, d, m );
  checkName( checks, d );
}

void checkReactor( Checks checks, Declaration & d ) {
  for( auto & m : d.members )
    switch( m.kind ) {
      case Member::watch:
      case Member::watchEach:
        checkWatch( checks, d, m );
        break;
      case Member::start:
      case Member::cleanup:
        break;
      default:
        checkEntityMember( checks, d, m );
    }
  checkOnce( checks, d, Member::start, "start" );
  checkOnce( checks, d, Member::cleanup, "cleanup" );
}

}  // namespace Koigen
