// ValueEmitter.cpp: values, enumerations, functions by hand and constants.
#include <algorithm>

#include "Emitter.h"
#include "Findings.h"

namespace Koigen {
namespace {

using Texts = std::vector< std::string >;

/// "1 or > 4094" and the like: what a range refuses, as its exception says it.
std::string refusal( Declaration const & d ) {
  std::string const field = d.name + "::" + d.field + " ";
  auto const bound = [&]( std::string const & text ) {
    return integerOf( text ) ? text : d.name + "::" + text;
  };
  auto const & range = d.range;
  if( range.kind == Range::positive )
    return field + "<= 0 not allowed";
  // A literal bound that no number can pass is not worth a word.
  auto const low = integerOf( range.low );
  bool const above = range.kind == Range::length ||
                     ( low && !less( lowestOf( d.stored.primitive ), range.lowest ) );
  return field + ( above ? "" : "< " + bound( range.low ) + " or " ) + "> " + bound( range.high ) +
         " not allowed";
}

std::string digits( Integer n ) {
  return ( n.negative ? "-" : "" ) + std::to_string( n.magnitude );
}

std::string rangeText( Context const & context, Declaration const & d ) {
  std::string const text = ", \"" + refusal( d ) + "\" };";
  if( d.range.kind == Range::none )
    return {};
  if( d.range.kind == Range::length )
    return "static constexpr Koi::StringLimit koiRange{ " + digits( d.range.highest ) + text;
  return "static constexpr Koi::Range< " + context.bare( d.stored ) + " > koiRange{ " +
         digits( d.range.lowest ) + ", " + digits( d.range.highest ) + text;
}

/// What every value says besides its fields.
Fill common( Context const & context, Declaration const & d ) {
  Texts constructors, functions, constants, facts;
  for( auto const & m : d.members ) {
    if( m.kind == Member::function )
      functions.push_back( memberFunctionText( context, m ) );
    if( m.kind == Member::constant )
      constants.push_back( constantText( context, m ) );
    if( m.kind == Member::constructor ) {
      std::string const parameters = context.parameters( m.parameters );
      constructors.push_back( page(
          "function",
          { { "doc", m.doc },
            { "declaration", ( m.parameters.size() == 1 ? "explicit " : "" ) + d.name +
                                 ( parameters.empty() ? "();" : "( " + parameters + " );" ) } } ) );
    }
  }
  facts.push_back( rangeText( context, d ) );
  if( d.unhashed )
    facts.push_back( "static constexpr bool koiUnhashed = true;" );
  if( d.textByHand )
    facts.push_back( "static constexpr bool koiTextByHand = true;" );
  return { { "doc", d.doc },
           { "Type", d.name },
           { "name", d.fullName() },
           { "constructors", stacked( constructors ) },
           { "functions", stacked( functions ) },
           { "constants", stacked( constants ) },
           { "facts", stacked( facts, "\n" ) },
           { "hooks", d.textByHand ? page( "hooks", { { "Type", d.name } } ) : "" } };
}

std::string cell( Member const & m ) { return m.settable ? m.name + "_" : "_" + m.name; }

/// A constructor from the given fields; nothing when it would be the default one.
std::string fieldConstructor( Context const & context, Declaration const & d,
                              std::vector< Member const * > const & fields ) {
  Texts parameters, initialisers;
  for( auto const * m : fields ) {
    parameters.push_back( context.argument( m->type ) + " " + m->name );
    initialisers.push_back( cell( *m ) + "( " + m->name + " )" );
  }
  if( fields.empty() )
    return {};
  return ( fields.size() == 1 ? "explicit " : "" ) + d.name + "( " + stacked( parameters, ", " ) +
         " ) : " + stacked( initialisers, ", " ) + " {}";
}

}  // namespace

std::string wrapperText( Context const & context, Declaration const & d ) {
  auto fill = common( context, d );
  fill["stored"] = context.bare( d.stored );
  fill["field"] = d.field;
  if( auto & constructors = fill["constructors"]; !constructors.empty() )
    constructors = d.name + "() = default;\n\n" + constructors;
  return page( "wrapper", fill );
}

std::string structureText( Context const & context, Declaration const & d ) {
  std::vector< Member const * > all, fixed;
  Texts accessors, fields, cells;
  for( auto const & m : d.members ) {
    if( m.kind != Member::field )
      continue;
    all.push_back( &m );
    if( !m.settable )
      fixed.push_back( &m );
    std::string const type = context.cpp( m.type );
    Fill const mutator = {
        { "attr", m.name }, { "argument", context.argument( m.type ) }, { "cell", cell( m ) } };
    accessors.push_back(
        page( "field", { { "doc", m.doc },
                         { "type", type },
                         { "attr", m.name },
                         { "cell", cell( m ) },
                         { "mutator", m.settable ? page( "mutator", mutator ) : "" } } ) );
    fields.push_back( std::string( m.orZero ? "Koi::fieldOrZero" : "Koi::field" ) + "( \"" +
                      m.name + "\", &" + d.name + "::" + cell( m ) + " )" );
    cells.push_back( type + " " + cell( m ) + "{};\n" );
  }
  Texts constructors = { fieldConstructor( context, d, all ) };
  if( fixed.size() < all.size() )
    constructors.push_back( fieldConstructor( context, d, fixed ) );
  if( d.inTable && fixed.size() > 1 )
    constructors.push_back( fieldConstructor( context, d, { all.front() } ) );
  auto fill = common( context, d );
  constructors.push_back( fill["constructors"] );
  fill["constructors"] = stacked( constructors, "\n" );
  fill["base"] = d.inOrder && !d.orderByHand ? "OrderedStructure" : "Structure";
  if( d.orderByHand )
    fill["hooks"] += page( "orderHooks", { { "Type", d.name } } );
  fill["accessors"] = stacked( accessors );
  fill["fields"] = stacked( fields, ",\n" );
  fill["cells"] = stacked( cells, "" );
  return page( "structure", fill );
}

std::string enumerationText( Context const &, Declaration const & d ) {
  constexpr std::size_t widest = 100;
  std::size_t longest = 0;
  bool documented = false;
  for( auto const & e : d.enumerators ) {
    std::string const name = e.name + ( e.number.empty() ? "" : " = " + e.number );
    documented |= !e.doc.empty();
    longest = std::max( longest, name.size() );
  }
  bool const beside =
      std::all_of( d.enumerators.begin(), d.enumerators.end(), [&]( auto const & e ) {
        return e.doc.find( '\n' ) == e.doc.npos && longest + e.doc.size() + 10 <= widest;
      } );

  Texts all;
  for( auto const & e : d.enumerators ) {
    bool const last = &e == &d.enumerators.back();
    std::string text = e.name + ( e.number.empty() ? "" : " = " + e.number );
    if( documented && !last )
      text += ",";
    if( !e.doc.empty() && beside )
      text += std::string( longest + 3 - text.size(), ' ' ) + "///< " + e.doc;
    else if( !e.doc.empty() )
      text = "/// " + e.doc + "\n" + text;
    all.push_back( text );
  }
  return page( documented ? "enumerationLong" : "enumeration",
               { { "doc", d.doc },
                 { "Type", d.name },
                 { "enumerators", stacked( all, documented ? "\n" : ", " ) } } );
}

std::string memberFunctionText( Context const & context, Member const & m ) {
  std::string const parameters = context.parameters( m.parameters );
  std::string const declaration =
      std::string( m.isVirtual ? "virtual " : "" ) + ( m.isStatic ? "static " : "" ) +
      context.cpp( m.type ) + " " + m.name +
      ( parameters.empty() ? "()" : "( " + parameters + " )" ) +
      ( m.isStatic || m.isOperation ? "" : " const" ) + ( m.isOverride ? " override" : "" ) + ";";
  return page( "function", { { "doc", m.doc }, { "declaration", declaration } } );
}

std::string functionText( Context const & context, Declaration const & d ) {
  Member m = d.members.front();
  m.doc = d.doc;
  m.isOperation = true;
  auto const & parameters = context.parameters( m.parameters );
  return page(
      "function",
      { { "doc", d.doc },
        { "declaration", "KOI_PUBLIC " + context.cpp( m.type ) + " " + m.name +
                             ( parameters.empty() ? "()" : "( " + parameters + " )" ) + ";" } } );
}

std::string constantText( Context const & context, Member const & m ) {
  bool const isConstexpr =
      m.type.primitive != Primitive::string8 &&
      ( m.type.primitive != Primitive::none || context.isEnumeration( m.type ) );
  std::string const initial = context.initial( m.initial );
  return page( "constant", { { "doc", m.doc },
                             { "constexpr", isConstexpr ? "constexpr " : "" },
                             { "type", context.cpp( m.type ) },
                             { "attr", m.name },
                             { "initial", initial.empty() ? "{}" : initial } } );
}

}  // namespace Koigen
