// CheckValues.cpp: what a value, an enumeration and what both can hold must fulfil.
#include "Checks.h"

#include <algorithm>

#include "Context.h"
#include "SlotLayout.h"

namespace Koigen {
namespace {

/// A bound of a range: a number, or a constant of the wrapper.
std::optional< Integer > boundOf( Checks checks, Declaration const & d, std::string const & text ) {
  std::string digits = text;
  if( auto const * m = Context::memberOf( d, text ) ) {
    if( m->kind != Member::constant || !same( m->type, d.stored ) ) {
      checks.findings.add( d.range.place, "'" + text + "' is not a constant of type '" +
                                              nameOf( d.stored.primitive ) + "'" );
      return {};
    }
    digits = m->initial.text;
  } else if( !integerOf( text ) ) {
    checks.findings.add(
        d.range.place,
        "'" + text + "' is neither a whole number nor a constant of '" + d.name + "'" );
    return {};
  }
  auto const number = integerOf( digits );
  if( number && !fits( *number, d.stored.primitive ) ) {
    checks.findings.add( d.range.place,
                         "'" + text + "' does not fit " + nameOf( d.stored.primitive ) );
    return {};
  }
  return number;
}

bool equal( Integer a, Integer b ) { return !less( a, b ) && !less( b, a ); }

void checkRange( Checks checks, Declaration & d ) {
  auto & range = d.range;
  auto const primitive = d.stored.primitive;
  auto const name = std::string( nameOf( primitive ) );
  if( range.kind == Range::length ) {
    if( primitive != Primitive::string8 && primitive != Primitive::name )
      return checks.findings.add( range.place,
                                  "'max' is for strings: write 'in 0.." + range.high + "'" );
    auto const number = integerOf( range.high );
    if( !number || !fits( *number, Primitive::u32 ) )
      return checks.findings.add( range.place, "'" + range.high + "' is not a length" );
    range.highest = *number;
    return;
  }
  if( range.kind == Range::none )
    return;
  if( !isWholeNumber( primitive ) )
    return checks.findings.add( range.place, "a " + name + " has no range" );
  if( range.kind == Range::positive ) {
    range.lowest = { false, 1 };
    range.highest = highestOf( primitive );
    return;
  }
  auto const low = boundOf( checks, d, range.low );
  auto const high = boundOf( checks, d, range.high );
  if( !low || !high )
    return;
  if( less( *high, *low ) )
    return checks.findings.add( range.place, "the range " + range.low + ".." + range.high +
                                                 " is empty: its bounds are reversed" );
  range.lowest = *low;
  range.highest = *high;
  if( equal( *low, lowestOf( primitive ) ) && equal( *high, highestOf( primitive ) ) )
    checks.findings.add( range.place, "the range admits every " + name + ": leave it out" );
}

/// Functions, constants and constructors by hand, which any value may have.
void checkByHand( Checks checks, Declaration & d ) {
  for( auto & m : d.members )
    if( m.kind == Member::constant )
      checkConstant( checks, d, m );
    else if( m.kind == Member::function || m.kind == Member::constructor ) {
      if( m.isOperation || m.isVirtual || m.isOverride )
        checks.findings.add( m.place, "a value has only functions and static functions" );
      checkFunction( checks, d, m );
    }
}

bool refusesZero( TypeUse const & type ) {
  auto const * d = type.declaration;
  return d && d->kind == Declaration::wrapper && isWholeNumber( d->stored.primitive ) &&
         d->range.kind != Range::none && less( {}, d->range.lowest );
}

void checkField( Checks checks, Declaration & d, Member & m ) {
  if( m.type.hold != TypeUse::whole )
    return checks.findings.add( m.type.place, "a value holds values, not pointers" );
  if( !checks.resolver.resolve( m.type, d, Resolver::complete ) )
    return;
  if( m.type.declaration && m.type.declaration->kind == Declaration::entity )
    return checks.findings.add( m.type.place,
                                "a value cannot hold the entity '" + m.type.text + "'" );
  if( d.inOrder && !d.orderByHand && !isOrdered( m.type ) )
    checks.findings.add( m.type.place,
                         "'" + d.name + "' is ordered, but '" + m.type.text + "' is not" );
  bool const structure = m.type.declaration && m.type.declaration->kind == Declaration::structure;
  if( !d.unhashed && structure && !isHashable( m.type ) )
    checks.findings.add( m.type.place, "'" + m.type.text + "' has no hash, so '" + d.name +
                                           "' must be declared 'unhashed'" );
  if( m.orZero && !refusesZero( m.type ) )
    checks.findings.add( m.type.place, "'or 0' needs a type that refuses 0" );
}

/// What is said of tables and slots where it does not belong, and the size of a foreign value.
void checkSlotWords( Checks checks, Declaration const & d ) {
  if( d.inTable && ( d.kind == Declaration::wrapper || d.foreign ) )
    checks.findings.add( d.place, "a table's value is a structure whose first field is its key" );
  if( !d.hashHeader.empty() && !d.inTable )
    checks.findings.add( d.hashPlace, "'hashed in' is for the key of a table's value" );
  if( d.numBytes.empty() )
    return;
  auto const number = integerOf( d.numBytes );
  if( !number || number->magnitude == 0 || number->magnitude > SlotLayout::sizeMax )
    checks.findings.add( d.bytesPlace, "'" + d.numBytes + "' is not a size from 1 to " +
                                           std::to_string( SlotLayout::sizeMax ) );
}

/// A value that lies in the slots of a table.
void checkTableValue( Checks checks, Declaration const & d ) {
  // The name stands in the table's file, in 64 bytes with its end.
  constexpr std::size_t nameMax = 63;
  if( d.fullName().size() > nameMax )
    checks.findings.add( d.place, "the name '" + d.fullName() +
                                      "' of a table's value has more than " +
                                      std::to_string( nameMax ) + " characters" );
  auto const key = std::find_if( d.members.begin(), d.members.end(),
                                 []( auto const & m ) { return m.kind == Member::field; } );
  if( key == d.members.end() )
    return;
  if( key->settable )
    checks.findings.add( key->place, "the key of a table's value is not 'settable'" );
  bool const known = key->type.declaration || key->type.primitive != Primitive::none;
  if( known && !isHashable( key->type ) )
    checks.findings.add( key->type.place, "the key type '" + key->type.text + "' has no hash" );
  for( auto const & fault : slotLayoutOf( d ).faults )
    checks.findings.add( fault.place, fault.text );
}

}  // namespace

void checkWrapper( Checks checks, Declaration & d ) {
  checkSlotWords( checks, d );
  checkName( d.place, d.field, checks.findings );
  if( d.inOrder )
    checks.findings.add( d.place, "'" + d.name + "' has one field and is ordered anyway" );
  if( !checks.resolver.resolve( d.stored, d, Resolver::complete ) )
    return;
  if( d.stored.primitive == Primitive::none )
    return checks.findings.add( d.stored.place, "'" + d.stored.text + "' is no primitive type" );
  checkByHand( checks, d );
  checkRange( checks, d );
}

void checkStructure( Checks checks, Declaration & d ) {
  checkSlotWords( checks, d );
  if( d.foreign || !d.header.empty() )
    return;
  bool const anyField = std::any_of( d.members.begin(), d.members.end(),
                                     []( auto const & m ) { return m.kind == Member::field; } );
  if( !anyField )
    checks.findings.add( d.place, "'" + d.name + "' has no fields" );
  if( d.orderByHand && !d.inOrder )
    checks.findings.add( d.place, "'" + d.name + "' has its order by hand, but is not 'ordered'" );
  for( auto & m : d.members )
    if( m.kind == Member::field )
      checkField( checks, d, m );
  checkByHand( checks, d );
  if( d.inTable )
    checkTableValue( checks, d );
}

void checkEnumeration( Checks checks, Declaration & d ) {
  std::uint64_t next = 0;
  std::map< std::uint64_t, std::string > taken;
  for( auto & e : d.enumerators ) {
    checkName( e.place, e.name, checks.findings );
    if( !e.doc.empty() )
      checkDoc( e.place, e.name, e.doc, checks.findings );
    if( !e.number.empty() ) {
      auto const number = integerOf( e.number );
      if( !number || !fits( *number, Primitive::u32 ) )
        return checks.findings.add( e.place, "'" + e.number + "' does not fit u32" );
      next = number->magnitude;
    }
    if( next > 0xffffffff )
      return checks.findings.add( e.place, "the number of '" + e.name + "' does not fit u32" );
    e.value = static_cast< std::uint32_t >( next++ );
    auto const [it, fresh] = taken.emplace( e.value, e.name );
    if( !fresh )
      checks.findings.add( e.place, "'" + e.name + "' has the number of '" + it->second + "'" );
  }
}

void checkFunction( Checks checks, Declaration const & d, Member & m ) {
  for( auto & p : m.parameters ) {
    if( !p.name.empty() )
      checkName( p.place, p.name, checks.findings );
    // What is handed over by reference or pointer need not be known to its declaration.
    bool const pointed = p.isReference || p.type.hold == TypeUse::ref;
    // A value's own members may speak of the value, and so may an entity's.
    if( checks.resolver.lookup( p.type.text, d ) == &d ) {
      p.type.declaration = &d;
      if( d.kind == Declaration::entity && !pointed )
        checks.findings.add( p.place,
                             "an entity is not copied: write '" + p.type.text + " const &'" );
      continue;
    }
    if( !checks.resolver.resolve( p.type, d, pointed ? Resolver::pointer : Resolver::complete ) )
      continue;
    if( p.type.declaration && p.type.declaration->kind == Declaration::entity && !pointed )
      checks.findings.add( p.place,
                           "an entity is not copied: write '" + p.type.text + " const &'" );
  }
  if( m.kind != Member::function )
    return;
  if( m.type.text.empty() ) {
    if( !m.isOperation && !m.isStatic )
      checks.findings.add( m.place, "'" + m.name + "' returns nothing: make it an operation" );
    return;
  }
  auto & result = m.type;
  bool const itself = checks.resolver.lookup( result.text, d ) == &d;
  bool const pointed = result.hold == TypeUse::ref;
  if( result.hold == TypeUse::weak || result.hold == TypeUse::own )
    return checks.findings.add( result.place, "a function returns a value or a 'ref'" );
  if( itself )
    result.declaration = &d;
  else if( !checks.resolver.resolve( result, d, pointed ? Resolver::pointer : Resolver::complete ) )
    return;
  if( !pointed && result.declaration && result.declaration->kind == Declaration::entity )
    checks.findings.add( result.place, "an entity is not copied: write 'ref " + result.text + "'" );
}

void checkConstant( Checks checks, Declaration const & d, Member & m ) {
  if( m.type.hold != TypeUse::whole )
    return checks.findings.add( m.type.place, "a constant is a value, not a pointer" );
  if( !checks.resolver.resolve( m.type, d, Resolver::complete ) )
    return;
  bool const mayBeEmpty = m.type.declaration && m.type.declaration->foreign;
  if( m.initial.kind == Initial::none && !mayBeEmpty )
    checks.findings.add( m.place, "the constant '" + m.name + "' has no value" );
  checkInitial( checks, d, m, m.initial, m.type );
}

}  // namespace Koigen
