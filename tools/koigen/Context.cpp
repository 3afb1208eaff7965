#include "Context.h"

#include <algorithm>
#include <cctype>

namespace Koigen {

std::string capital( std::string name ) {
  name[0] = static_cast< char >( std::toupper( static_cast< unsigned char >( name[0] ) ) );
  return name;
}

std::string lowerCamel( std::string name ) {
  name[0] = static_cast< char >( std::tolower( static_cast< unsigned char >( name[0] ) ) );
  return name;
}

std::string page( std::string const & name, Fill const & fill ) {
  return Page::named( name ).filled( fill );
}

std::string Context::bare( TypeUse const & type ) const {
  switch( type.primitive ) {
    case Primitive::u8:
      return "Koi::U8";
    case Primitive::u16:
      return "Koi::U16";
    case Primitive::u32:
      return "Koi::U32";
    case Primitive::u64:
      return "Koi::U64";
    case Primitive::i32:
      return "Koi::I32";
    case Primitive::boolean:
      return "bool";
    case Primitive::seconds:
      return "Koi::Seconds";
    case Primitive::string8:
      return "Koi::String8";
    case Primitive::name:
      return "Koi::Name";
    case Primitive::none:
      break;
  }
  if( type.hidden )
    return "::" + type.declaration->fullName();
  return type.text.empty() ? "void" : type.text;
}

std::string Context::cpp( TypeUse const & type ) const {
  return type.hold == TypeUse::ref || type.hold == TypeUse::own ? "Koi::Ptr< " + bare( type ) + " >"
                                                                : bare( type );
}

std::string Context::argument( TypeUse const & type ) const {
  bool const byValue =
      !isPointer( type ) && ( isEnumeration( type ) || ( type.primitive != Primitive::none &&
                                                         type.primitive != Primitive::string8 &&
                                                         type.primitive != Primitive::name ) );
  return byValue ? cpp( type ) : cpp( type ) + " const &";
}

std::string Context::parameters( std::vector< Parameter > const & list ) const {
  std::vector< std::string > texts;
  for( auto const & p : list )
    texts.push_back( cpp( p.type ) + ( p.isConst ? " const" : "" ) + ( p.isReference ? " &" : "" ) +
                     ( p.name.empty() ? "" : " " + p.name ) );
  return stacked( texts, ", " );
}

std::string Context::initial( Initial const & initial ) const {
  switch( initial.kind ) {
    case Initial::none:
      return {};
    case Initial::number:
    case Initial::boolean:
      return initial.text;
    case Initial::quoted:
      return "\"" + initial.text + "\"";
    case Initial::word:
      // Qualified by its enumeration, for an attribute may have the enumerator's name.
      return initial.enumeration ? bare( initial.type ) + "::" + initial.text : initial.text + "()";
    case Initial::construction: {
      std::vector< std::string > arguments;
      for( auto const & a : initial.arguments )
        arguments.push_back( this->initial( a ) );
      return bare( initial.type ) +
             ( arguments.empty() ? "()" : "( " + stacked( arguments, ", " ) + " )" );
    }
  }
  return {};
}

bool Context::isEntity( TypeUse const & type ) const {
  return type.declaration && type.declaration->kind == Declaration::entity;
}

bool Context::isEnumeration( TypeUse const & type ) const {
  return type.declaration && type.declaration->kind == Declaration::enumeration;
}

bool Context::isWrapper( TypeUse const & type ) const {
  return type.declaration && type.declaration->kind == Declaration::wrapper;
}

bool Context::isRanged( TypeUse const & type ) const {
  return isWrapper( type ) && type.declaration->range.kind != Range::none;
}

std::vector< EntityParameter > Context::constructorOf( Declaration const & entity ) {
  std::vector< EntityParameter > all;
  if( entity.base.declaration )
    all = constructorOf( *entity.base.declaration );
  for( auto const & p : entity.parameters )
    all.push_back( { p.name, p.type, nullptr, &entity } );
  for( auto const & m : entity.members )
    if( m.kind == Member::param || m.kind == Member::watch ) {
      all.push_back( { m.name, m.type, &m, &entity } );
      if( m.kind == Member::watch )
        all.back().type.hold = TypeUse::ref;
    }
  return all;
}

int Context::nameIndex( std::vector< EntityParameter > const & parameters ) {
  auto const it = std::find_if( parameters.begin(), parameters.end(), []( auto const & p ) {
    return p.type.primitive == Primitive::name && p.name == "name";
  } );
  return it == parameters.end() ? -1 : static_cast< int >( it - parameters.begin() );
}

Member const * Context::memberOf( Declaration const & declaration, std::string const & name ) {
  for( auto const & m : declaration.members )
    if( m.name == name )
      return &m;
  return declaration.base.declaration ? memberOf( *declaration.base.declaration, name ) : nullptr;
}

}  // namespace Koigen
