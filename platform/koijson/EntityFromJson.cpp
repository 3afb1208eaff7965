#include <koijson/EntityFromJson.h>

#include <algorithm>
#include <set>
#include <string>

#include <koi/AttributeAccess.h>
#include <koi/GenericEntity.h>
#include <koi/Mirror.h>
#include <koi/Value.h>
#include <koijson/NearestName.h>
#include <koijson/ValueName.h>

#include "JsonText.h"
#include "ValueFromJson.h"

namespace Koi {
namespace {

void fill( Entity & entity, JsonPlace const & place );

std::string text( GenericIf const & v ) { return std::string( v.strRep() ); }

/// One attribute of one entity.
class AttributeFromJson {
 public:
  AttributeFromJson( Entity & entity, std::size_t index )
      : entity_( entity ), index_( index ), attribute_( entity.koiType()->fields[index] ) {}

  void is( JsonPlace const & place );

  GenericIfPtr read( CtorArgs const & args = {} ) const { return does( GenericIfOp::read, args ); }

 private:
  GenericIfPtr does( GenericIfOp::Code code, CtorArgs const & args ) const {
    return entity_.koiType()->genericIfAttributeOp( *genericIf( Ptr< Entity >( &entity_ ) ),
                                                    { static_cast< int >( index_ ), code }, args,
                                                    nullptr );
  }
  /// What the mutator refuses is refused at that place.
  GenericIfPtr set( JsonPlace const & place, CtorArgs const & args ) const {
    return place.refusing( [&] { return does( GenericIfOp::set, args ); } );
  }

  void parameterIs( JsonPlace const & place ) const;
  template< class Take >
  void eachMember( JsonPlace const & place, Take take ) const;
  void membersAre( JsonPlace const & place ) const;
  void childrenAre( JsonPlace const & place ) const;
  void childIs( JsonPlace const & place, CtorArgs const & key ) const;
  void queueIs( JsonPlace const & place ) const;
  SettledField keyField( GenericIfPtr const & key ) const;

  Entity & entity_;
  std::size_t const index_;
  KoiAttribute const & attribute_;
};

void AttributeFromJson::is( JsonPlace const & place ) {
  std::string const typeName = entity_.koiType()->name;
  if( attribute_.target )
    place.refuse( typeName + "::" + attribute_.name + " refers to another " +
                  attribute_.target->name + ", which JSON cannot" );
  switch( attribute_.access->kind ) {
    case AttributeKind::parameter:
      return parameterIs( place );
    case AttributeKind::computed:
      place.refuse( typeName + "::" + attribute_.name +
                    " cannot be set: it is a constant, or made of other attributes" );
    case AttributeKind::table:
      place.refuse( typeName + "::" + attribute_.name +
                    " cannot be set: it is a table in shared memory" );
    case AttributeKind::scalar:
      set( place, { valueFromJson( attribute_.type, place, read() ) } );
      return;
    case AttributeKind::child:
      place.require( place.json.is_object(), "an object" );
      return childIs( place, {} );
    case AttributeKind::members:
      return membersAre( place );
    case AttributeKind::children:
      if( !attribute_.type )
        place.refuse( typeName + "::" + attribute_.name +
                      " cannot be set: its children are of any type" );
      return childrenAre( place );
    case AttributeKind::queue:
      return queueIs( place );
  }
}

/// It was given to the constructor; the text may repeat it.
void AttributeFromJson::parameterIs( JsonPlace const & place ) const {
  GenericIfPtr const built = read();
  GenericIfPtr const given = valueFromJson( attribute_.type, place, built );
  if( !isSame( *built, *given ) )
    place.refuse( std::string( entity_.koiType()->name ) + "::" + attribute_.name + " is " +
                  text( *built ) + " here for good, not " + text( *given ) );
}

/// Which field of the members is their key: the first of the key's type.
SettledField AttributeFromJson::keyField( GenericIfPtr const & key ) const {
  auto const fields = attribute_.type->fields;
  auto const at = std::ranges::find( fields, attribute_.key, &KoiAttribute::type );
  return { static_cast< std::size_t >( at - fields.begin() ), key };
}

/// Calls take( key, place of the member ) for each member of a collection.
template< class Take >
void AttributeFromJson::eachMember( JsonPlace const & place, Take take ) const {
  place.require( place.json.is_structured(), "an object" );
  if( place.json.is_object() ) {
    for( auto const & member : place.json.items() ) {
      JsonPlace const at = place.at( member.key() );
      take( at.refusing( [&] { return valueFromName( attribute_.key, member.key() ); } ), at );
    }
    return;
  }
  std::set< std::string > keys;
  for( std::size_t i = 0; i < place.json.size(); ++i ) {
    JsonPlace const at = place.at( i );
    at.require( at.json.is_object() && at.json.size() == 2 && at.json.contains( "key" ) &&
                    at.json.contains( "value" ),
                "an object of \"key\" and \"value\"" );
    GenericIfPtr const key = valueFromJson( attribute_.key, at.at( "key" ) );
    if( !keys.insert( text( *key ) ).second )
      at.at( "key" ).refuse( text( *key ) + " stands there twice" );
    take( key, at.at( "value" ) );
  }
}

void AttributeFromJson::membersAre( JsonPlace const & place ) const {
  eachMember( place, [&]( GenericIfPtr const & key, JsonPlace const & at ) {
    GenericIfPtr const present = read( { key } );
    if( attribute_.keyInValue )
      set( at, { valueFromJson( attribute_.type, at, present, keyField( key ) ) } );
    else
      set( at, { key, valueFromJson( attribute_.type, at, present ) } );
  } );
}

void AttributeFromJson::childrenAre( JsonPlace const & place ) const {
  eachMember( place, [&]( GenericIfPtr const & key, JsonPlace const & at ) {
    at.require( at.json.is_object(), "an object" );
    childIs( at, { key } );
  } );
}

/// Fills the child, which is built first when it is not there. Its key stands before the other
/// arguments; an only child has none.
void AttributeFromJson::childIs( JsonPlace const & place, CtorArgs const & key ) const {
  GenericIfPtr child = read( key );
  if( !child ) {
    CtorArgs args = key;
    std::string leftOut;
    try {
      for( KoiParameter const & parameter : attribute_.type->parameters.subspan( key.size() ) ) {
        std::string const name = parameter.name + 1;  // "_internal" is the attribute "internal"
        if( place.json.contains( name ) && parameter.type )
          args.push_back( valueFromJson( parameter.type, place.at( name ) ) );
        else if( name == "name" )
          args.push_back( genericIf( Name( attribute_.name ) ) );
        else {
          ( leftOut += leftOut.empty() ? "" : ", " ) += name;
          args.push_back( parameter.type ? zeroOf( parameter.type ) : nullptr );
        }
      }
      child = does( GenericIfOp::set, args );
    } catch( Exception const & e ) {
      place.refuse( e.what() + ( leftOut.empty() ? "" : "; left out: " + leftOut ) );
    }
  }
  fill( *entityIn( *child ), place );
}

void AttributeFromJson::queueIs( JsonPlace const & place ) const {
  place.require( place.json.is_array(), "an array" );
  U64 const lastNumber = ~U64{ 0 } >> ( 64 - 8 * attribute_.key->size );  // 0 comes behind it
  if( !place.json.empty() && place.json.size() - 1 > lastNumber )
    place.refuse( "a queue of more than " + std::to_string( lastNumber + 1 ) + " members" );
  // The members that are there have their numbers; further ones count on behind the last.
  auto const at = entity_.koiType()->genericIfAttributeIterator(
      *genericIf( Ptr< Entity >( &entity_ ) ), static_cast< int >( index_ ), nullptr );
  U64 next = 0;
  for( std::size_t i = 0; i < place.json.size(); ++i ) {
    GenericIfPtr number, present;
    if( at->iterNonnull() ) {
      number = at->iterKey();
      present = at->iterObj();
      at->iterInc();
    } else {
      number = valueFromName( attribute_.key, std::to_string( next & lastNumber ) );
    }
    next = std::stoull( text( *number ) ) + 1;
    JsonPlace const element = place.at( i );
    set( element, { number, valueFromJson( attribute_.type, element, present ) } );
  }
}

void fill( Entity & entity, JsonPlace const & place ) {
  place.require( place.json.is_object(), "an object" );
  KoiType const & type = *entity.koiType();
  std::vector< std::string_view > names;
  for( KoiAttribute const & attribute : type.fields )
    names.push_back( attribute.name );
  for( auto const & [name, json] : place.json.items() ) {
    auto const found = std::ranges::find( names, name );
    if( found == names.end() )
      place.at( name ).refuse( std::string( type.name ) + " has no attribute \"" + name + "\"" +
                               didYouMean( name, names ) );
    AttributeFromJson( entity, static_cast< std::size_t >( found - names.begin() ) )
        .is( place.at( name ) );
  }
}

/// Another entity that holds the same.
Ptr< Entity > copyOf( Entity & entity ) {
  KoiType const & type = *entity.koiType();
  CtorArgs args;
  for( KoiParameter const & parameter : type.parameters )
    for( std::size_t i = 0; i < type.fields.size(); ++i )
      if( std::string_view( type.fields[i].name ) == parameter.name + 1 )
        args.push_back( AttributeFromJson( entity, i ).read() );
  Ptr< Entity > const copy = type.newEntity( nullptr, entity.name(), args );
  Mirror from( &entity, Mirror::source ), to( copy, Mirror::proxy );
  auto const carry = []( Mirror & out, Mirror & in ) {
    Ptr< NboAttrLog::Out > const bytes( new NboAttrLog::Out );
    out.flush( *bytes );
    in.received( bytes->data(), bytes->size() );
  };
  while( from.hasOutput() || to.hasOutput() ) {
    carry( from, to );
    carry( to, from );
  }
  return copy;
}

}  // namespace

void entityFromJson( Entity & entity, std::string_view text ) {
  Json const json = parsedJson( text );
  JsonPlace const all{ json, "" };
  // 1. A copy takes it, or refuses.
  fill( *copyOf( entity ), all );
  // 2. What the copy took, the entity takes.
  transaction( [&] { fill( entity, all ); } );
}

}  // namespace Koi
