// CheckInitial.cpp: whether a default or a constant is one of its type.
#include "Checks.h"

#include <algorithm>

#include "Context.h"

namespace Koigen {
namespace {

void refuse( Checks checks, Initial const & initial, TypeUse const & type ) {
  checks.findings.add( initial.place, "a value of type '" + described( type ) + "' was expected" );
}

/// A word that names a constant which stands before `limit`.
bool isConstant( Checks checks, Declaration const & d, Member const & limit, Initial & initial,
                 TypeUse const & type ) {
  auto const * m = Context::memberOf( d, initial.text );
  if( initial.kind != Initial::word || !m || m->kind != Member::constant )
    return false;
  bool const own = &d.members.front() <= m && m <= &d.members.back();
  if( own && m >= &limit )
    checks.findings.add( initial.place,
                         "the constant '" + m->name + "' must stand before its use" );
  else if( !same( m->type, type ) )
    refuse( checks, initial, type );
  initial.constant = m;
  return true;
}

void checkPrimitive( Checks checks, Initial & initial, TypeUse const & type ) {
  auto const p = type.primitive;
  if( p == Primitive::boolean ) {
    if( initial.kind != Initial::word || ( initial.text != "true" && initial.text != "false" ) )
      return refuse( checks, initial, type );
    initial.kind = Initial::boolean;
  } else if( p == Primitive::string8 ) {
    if( initial.kind != Initial::quoted )
      refuse( checks, initial, type );
  } else if( p == Primitive::seconds ) {
    // A double takes any number; a leading 0 would be read as octal.
    if( initial.kind != Initial::number ||
        ( !integerOf( initial.text ) && initial.text.find( '.' ) == std::string::npos ) )
      refuse( checks, initial, type );
  } else if( p == Primitive::name ) {
    checks.findings.add( initial.place, "a Koi::Name has no default" );
  } else {
    auto const number = integerOf( initial.text );
    if( initial.kind != Initial::number || !number )
      refuse( checks, initial, type );
    else if( !fits( *number, p ) )
      checks.findings.add( initial.place, "'" + initial.text + "' does not fit " + nameOf( p ) );
  }
}

void checkEnumerator( Checks checks, Initial & initial, TypeUse const & type ) {
  auto const & all = type.declaration->enumerators;
  if( initial.kind != Initial::word || std::none_of( all.begin(), all.end(), [&]( auto const & e ) {
        return e.name == initial.text;
      } ) ) {
    checks.findings.add( initial.place,
                         "an enumerator of '" + type.declaration->fullName() + "' was expected" );
    return;
  }
  initial.enumeration = type.declaration;
  initial.type.text = type.text;
}

bool admitted( Integer number, Range const & range ) {
  return ( range.kind != Range::between && range.kind != Range::positive ) ||
         ( !less( number, range.lowest ) && !less( range.highest, number ) );
}

/// VlanId( 1 ): one argument of the stored type, inside the range.
void checkWrapped( Checks checks, Declaration const & d, Member const & limit, Initial & initial,
                   Declaration const & wrapper ) {
  if( initial.arguments.size() != 1 )
    return checks.findings.add( initial.place, "'" + wrapper.name + "' takes one value" );
  auto & argument = initial.arguments.front();
  if( isConstant( checks, d, limit, argument, wrapper.stored ) )
    return;
  checkPrimitive( checks, argument, wrapper.stored );
  auto const number = integerOf( argument.text );
  if( argument.kind == Initial::number && number && !admitted( *number, wrapper.range ) )
    checks.findings.add( argument.place,
                         "'" + argument.text + "' is outside the range of '" + wrapper.name + "'" );
  if( argument.kind == Initial::quoted && wrapper.range.kind == Range::length &&
      argument.text.size() > wrapper.range.highest.magnitude )
    checks.findings.add( argument.place, "the text is longer than '" + wrapper.name + "' admits" );
}

/// InternalVlanRange( VlanId( 1006 ), VlanId( 4094 ) ): all fields, those that are not settable, or
/// none.
void checkStructured( Checks checks, Declaration const & d, Member const & limit, Initial & initial,
                      Declaration const & structure ) {
  std::vector< Member const * > all, fixed;
  for( auto const & m : structure.members )
    if( m.kind == Member::field ) {
      all.push_back( &m );
      if( !m.settable )
        fixed.push_back( &m );
    }
  auto const count = initial.arguments.size();
  auto const & fields = count == all.size() ? all : fixed;
  if( count == 0 )
    return;
  if( count != fields.size() )
    return checks.findings.add( initial.place, "'" + structure.name + "' takes " +
                                                   std::to_string( all.size() ) + " values, not " +
                                                   std::to_string( count ) );
  for( std::size_t i = 0; i < count; ++i ) {
    TypeUse type = fields[i]->type;
    // An enumerator among them is spelled so that it is found from anywhere.
    if( type.declaration )
      type.text = type.declaration->fullName();
    checkInitial( checks, d, limit, initial.arguments[i], type );
  }
}

}  // namespace

void checkInitial( Checks checks, Declaration const & d, Member const & limit, Initial & initial,
                   TypeUse const & type ) {
  if( initial.kind == Initial::none || isConstant( checks, d, limit, initial, type ) )
    return;
  if( type.primitive != Primitive::none )
    return checkPrimitive( checks, initial, type );
  if( !type.declaration )
    return;  // the type is wrong, which was found before
  if( type.declaration->kind == Declaration::enumeration )
    return checkEnumerator( checks, initial, type );
  if( type.declaration->kind == Declaration::entity )
    return checks.findings.add( initial.place, "a pointer to an entity has no default but null" );
  if( initial.kind != Initial::construction )
    return refuse( checks, initial, type );
  if( !checks.resolver.resolve( initial.type, d, Resolver::complete ) )
    return;
  if( initial.type.declaration != type.declaration )
    return refuse( checks, initial, type );
  if( type.declaration->kind == Declaration::wrapper )
    return checkWrapped( checks, d, limit, initial, *type.declaration );
  if( !type.declaration->foreign )
    return checkStructured( checks, d, limit, initial, *type.declaration );
  for( auto const & argument : initial.arguments )
    if( argument.kind == Initial::word || argument.kind == Initial::construction )
      checks.findings.add( argument.place, "a number or a text was expected" );
}

}  // namespace Koigen
