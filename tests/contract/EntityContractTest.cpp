// EntityContractTest.cpp: what holds for every registered entity type, seen through its type node:
// it is built by name, its attributes are read, set, walked and told of, and a mirror of it stays
// equal to it.

#include <algorithm>
#include <random>
#include <set>

#include <gtest/gtest.h>

#include <koi/AttributeAccess.h>
#include <koi/Exception.h>
#include <koi/GenericEntity.h>
#include <koi/Mirror.h>

#include "contract/Samples.h"

using namespace Tests;
using Koi::AttributeKind;
using Koi::CtorArgs;
using Koi::Entity;
using Koi::GenericIfOp;
using Koi::KoiAttribute;
using Koi::Name;
using Koi::Ptr;

namespace {

std::vector< KoiType const * > entityTypes() {
  auto types = Koi::typeNodes();
  std::erase_if( types, []( KoiType const * type ) { return type->kind != KoiType::entity; } );
  return types;
}

Ptr< Entity > made( KoiType const * type, Name const & name, unsigned nth = 0 );

/// The nth value of a type, or the nth entity that a reference of that type may refer to.
GenericIfPtr given( KoiType const * type, KoiType const * target, unsigned nth ) {
  if( target )
    return genericIf( made( target, Name( "target " + std::to_string( nth ) ), nth ) );
  auto const samples = fewSamplesOf( type, 5 );
  return samples[nth % samples.size()];
}

/// The arguments of a constructor behind the first `skip`.
CtorArgs argumentsOf( KoiType const * type, std::size_t skip, unsigned nth ) {
  CtorArgs args;
  for( auto const & parameter : type->parameters.subspan( skip ) )
    args.push_back( given( parameter.type, parameter.target, nth ) );
  return args;
}

Ptr< Entity > made( KoiType const * type, Name const & name, unsigned nth ) {
  CtorArgs args = argumentsOf( type, 0, nth );
  for( std::size_t i = 0; i < type->parameters.size(); ++i )
    if( std::string_view( type->parameters[i].name ) == "_name" )
      args.erase( args.begin() + static_cast< std::ptrdiff_t >( i ) );
  return type->newEntity( nullptr, name, args );
}

/// What makes a child of that attribute, behind the first `skip`: the arguments of its constructor,
/// or, where it may be of any type, the child.
CtorArgs childArgumentsOf( KoiAttribute const & attribute, std::size_t skip, unsigned nth ) {
  if( attribute.type )
    return argumentsOf( attribute.type, skip, nth );
  return { genericIf( made( Koi::typeNode( "Coredb::Dir" ), Name( "child" ), nth ) ) };
}

GenericIfPtr does( Entity & entity, std::size_t attribute, GenericIfOp::Code code,
                   CtorArgs const & args = {} ) {
  return entity.koiType()->genericIfAttributeOp( *Koi::genericIf( Ptr< Entity >( &entity ) ),
                                                 { static_cast< int >( attribute ), code }, args,
                                                 nullptr );
}

Ptr< Koi::GenericIfIterator > walk( Entity & entity, std::size_t attribute ) {
  return entity.koiType()->genericIfAttributeIterator( *Koi::genericIf( Ptr< Entity >( &entity ) ),
                                                       static_cast< int >( attribute ), nullptr );
}

/// A NaN is itself here, as it is for mutators.
bool same( GenericIfPtr const & a, GenericIfPtr const & b ) {
  if( !a || !b )
    return !a && !b;
  return equal( *a, *b ) || ( !entityIn( *a ) && logOf( *a ) == logOf( *b ) );
}

std::string textOf( GenericIfPtr const & v ) { return v ? std::string( v->strRep() ) : "none"; }

/// All that reflection shows of an entity and of what it owns.
std::string allOf( Entity & entity ) {
  std::string all = std::string( entity.fullName() ) + ": " + entity.koiType()->name + "\n";
  auto const fields = entity.koiType()->fields;
  auto const add = [&]( KoiAttribute const & attribute, std::string const & key,
                        GenericIfPtr const & v ) {
    bool const owned = v && attribute.access->hasChildren();
    all += std::string( attribute.name ) + key + " " +
           ( owned ? allOf( *entityIn( *v ) ) : textOf( v ) + "\n" );
  };
  for( std::size_t i = 0; i < fields.size(); ++i )
    if( auto const at = walk( entity, i ) )
      for( ; at->iterNonnull(); at->iterInc() )
        add( fields[i], "[" + textOf( at->iterKey() ) + "]", at->iterObj() );
    else
      add( fields[i], "", does( entity, i, GenericIfOp::read ) );
  return all;
}

/// What an observer of any type was told: "shelf[7]".
class Told {
 public:
  explicit Told( Entity const & entity )
      : observer_( entity.koiType()->genericNotifiee(
            entity, [this]( KoiAttribute const & attribute, GenericIfPtr const & key ) {
              all_.push_back( attribute.name + ( key ? "[" + textOf( key ) + "]" : "" ) );
            } ) ) {}
  std::vector< std::string > taken() { return std::exchange( all_, {} ); }
  Entity const * entity() const { return observer_->entity(); }

 private:
  std::vector< std::string > all_;
  std::unique_ptr< Koi::GenericNotifiee > observer_;
};

using Calls = std::vector< std::string >;

class EntityContract : public testing::TestWithParam< KoiType const * > {
 protected:
  KoiType const * const type = GetParam();
  std::span< KoiAttribute const > const fields = type->fields;
  Ptr< Entity > const entity = made( type, Name( "an entity" ) );

  /// Sets a member or a scalar, and says whether the mutator took it. Whoever takes nothing tells
  /// nobody.
  bool sets( Told & told, std::size_t i, CtorArgs const & args ) {
    try {
      does( *entity, i, GenericIfOp::set, args );
      return true;
    } catch( Koi::RangeException const & ) {
      EXPECT_EQ( told.taken(), Calls() ) << fields[i].name;
      return false;
    }
  }
  CtorArgs memberArguments( std::size_t i, GenericIfPtr const & key, unsigned nth ) const {
    auto const & attribute = fields[i];
    CtorArgs args;
    if( attribute.access->kind == AttributeKind::children )
      args = childArgumentsOf( attribute, 1, nth );
    else
      args.push_back( given( attribute.type, attribute.target, nth ) );
    if( !attribute.keyInValue )
      args.insert( args.begin(), key );
    return args;
  }
  void checkScalar( std::size_t i );
  void checkChild( std::size_t i );
  void checkMembers( std::size_t i );
};

}  // namespace

TEST_P( EntityContract, isBuiltByTheNameOfItsType ) {
  KoiType const * const found = Koi::typeNode( type->name );
  EXPECT_EQ( found, type );
  EXPECT_EQ( entity->koiType(), type );
  EXPECT_EQ( entity->fullName(), Koi::String8( "an entity" ) );
  GenericIfPtr const wrapped = Koi::genericIf( entity );
  EXPECT_EQ( textOf( wrapped ), "an entity" );
  EXPECT_EQ( wrapped->type(), type );
  EXPECT_THROW( wrapped->hash(), Koi::UnhashableException );
  EXPECT_TRUE( equal( *wrapped, *Koi::genericIf( entity ) ) );
  EXPECT_FALSE( equal( *wrapped, *Koi::genericIf( made( type, Name( "an entity" ) ) ) ) );

  Ptr< Entity > const parent = made( type, Name( "a/parent" ) );
  CtorArgs args = argumentsOf( type, 0, 1 );
  EXPECT_TRUE( entityIn( *type->genericIfFromCtorArgs( type, args, nullptr ) ) );
  args.push_back( Koi::genericIf( Koi::U8{ 0 } ) );
  EXPECT_THROW( type->genericIfFromCtorArgs( type, args, nullptr ), Koi::ArgumentException );
  args.pop_back();
  for( auto & arg : args ) {
    GenericIfPtr const other = std::exchange(
        arg, parent->koiType()->genericIfAttributeOp( *wrapped, { -1, GenericIfOp::equal },
                                                      CtorArgs{ wrapped }, nullptr ) );
    if( other->type() != arg->type() ) {
      EXPECT_THROW( type->genericIfFromCtorArgs( type, args, nullptr ), Koi::ArgumentException );
    }
    arg = other;
  }
  bool notHandled = false;
  GenericIfOp const beyond{ static_cast< int >( fields.size() ), GenericIfOp::read };
  EXPECT_FALSE( type->genericIfAttributeOp( *wrapped, beyond, {}, &notHandled ) );
  EXPECT_TRUE( notHandled );
}

void EntityContract::checkScalar( std::size_t i ) {
  Told told( *entity );
  std::vector< GenericIfPtr > kept;  // a weak reference leaves with its target
  for( unsigned nth = 0; nth < 5; ++nth ) {
    GenericIfPtr const before = does( *entity, i, GenericIfOp::read );
    GenericIfPtr const v = kept.emplace_back( given( fields[i].type, fields[i].target, nth ) );
    if( !sets( told, i, { v } ) )
      continue;
    Calls const expected = same( before, v ) ? Calls() : Calls{ fields[i].name };
    EXPECT_EQ( told.taken(), expected );
    EXPECT_TRUE( same( does( *entity, i, GenericIfOp::read ), v ) ) << fields[i].name;
    sets( told, i, { v } );
    EXPECT_EQ( told.taken(), Calls() ) << "what is there already is no change";
  }
  EXPECT_THROW( does( *entity, i, GenericIfOp::set ), Koi::ArgumentException );
  EXPECT_THROW( does( *entity, i, GenericIfOp::del ), Koi::OpNotSupportedException );
}

void EntityContract::checkChild( std::size_t i ) {
  Told told( *entity );
  CtorArgs const args = argumentsOf( fields[i].type, 0, 1 );
  GenericIfPtr const child = does( *entity, i, GenericIfOp::set, args );
  EXPECT_EQ( told.taken(), Calls{ fields[i].name } );
  EXPECT_EQ( entityIn( *child )->parent(), entity.ptr() );
  EXPECT_TRUE( same( child, does( *entity, i, GenericIfOp::set, args ) ) );
  EXPECT_THROW( does( *entity, i, GenericIfOp::set, argumentsOf( fields[i].type, 0, 2 ) ),
                Koi::NameInUseException );
  EXPECT_EQ( told.taken(), Calls() );
  EXPECT_TRUE( same( child, does( *entity, i, GenericIfOp::del ) ) );
  EXPECT_EQ( told.taken(), Calls{ fields[i].name } );
  EXPECT_FALSE( entityIn( *child )->parent() );
  EXPECT_FALSE( does( *entity, i, GenericIfOp::read ) );
}

void EntityContract::checkMembers( std::size_t i ) {
  Told told( *entity );
  std::set< std::string > keys;
  std::vector< GenericIfPtr > kept;
  // 1. Members are put in; what is there already is no change.
  for( unsigned nth = 0; nth < 5; ++nth ) {
    CtorArgs const args = memberArguments( i, given( fields[i].key, nullptr, nth ), nth );
    kept.push_back( fields[i].target ? args.back() : GenericIfPtr() );
    if( !sets( told, i, args ) )
      continue;
    Calls const calls = told.taken();
    ASSERT_LE( calls.size(), 1u ) << fields[i].name;
    keys.insert( calls.begin(), calls.end() );
    does( *entity, i, GenericIfOp::set, args );
    EXPECT_EQ( told.taken(), Calls() );
  }
  // 2. The walk meets all of them; each is read, and removed on the way.
  std::size_t numMet = 0;
  for( auto const at = walk( *entity, i ); at->iterNonnull(); at->iterInc() ) {
    GenericIfPtr const key = at->iterKey();
    EXPECT_TRUE( same( does( *entity, i, GenericIfOp::read, { key } ), at->iterObj() ) );
    if( fields[i].access->hasChildren() ) {
      EXPECT_EQ( entityIn( *at->iterObj() )->parent(), entity.ptr() );
    }
    at->iterDel();
    EXPECT_EQ( told.taken(), Calls{ fields[i].name + ( "[" + textOf( key ) + "]" ) } );
    EXPECT_TRUE( same( at->iterKey(), key ) );
    EXPECT_FALSE( does( *entity, i, GenericIfOp::read, { key } ) );
    // 3. Removing what is not there tells nobody.
    does( *entity, i, GenericIfOp::del, { key } );
    EXPECT_EQ( told.taken(), Calls() );
    ++numMet;
  }
  EXPECT_EQ( numMet, keys.size() ) << fields[i].name;
  // 4. A child that was built otherwise holds its name; what it only was at first does not count.
  if( fields[i].access->hasChildren() && fields[i].type && fields[i].type->parameters.size() > 1 ) {
    bool const isFixed =
        std::ranges::any_of( fields[i].type->parameters.subspan( 1 ),
                             []( auto const & parameter ) { return !parameter.isInitial; } );
    GenericIfPtr const key = given( fields[i].key, nullptr, 0 );
    GenericIfPtr const child = does( *entity, i, GenericIfOp::set, memberArguments( i, key, 1 ) );
    auto const again = [&] {
      return does( *entity, i, GenericIfOp::set, memberArguments( i, key, 2 ) );
    };
    if( isFixed ) {
      EXPECT_THROW( again(), Koi::NameInUseException );
    } else {
      EXPECT_TRUE( same( again(), child ) );
    }
  }
  EXPECT_THROW( does( *entity, i, GenericIfOp::read ), Koi::ArgumentException );
}

TEST_P( EntityContract, attributesAreReadSetAndToldOf ) {
  for( std::size_t i = 0; i < fields.size(); ++i )
    switch( fields[i].access->kind ) {
      case AttributeKind::parameter:
      case AttributeKind::computed: {
        GenericIfPtr const v = does( *entity, i, GenericIfOp::read );
        EXPECT_TRUE( v && v->type() == ( fields[i].type ? fields[i].type : fields[i].target ) );
        EXPECT_THROW( does( *entity, i, GenericIfOp::set, { v } ), Koi::OpNotSupportedException );
        EXPECT_FALSE( walk( *entity, i ) );
        break;
      }
      case AttributeKind::table: {  // empty as long as nobody writes it, which reflection does not
        GenericIfPtr const key = given( fields[i].key, nullptr, 0 );
        EXPECT_FALSE( does( *entity, i, GenericIfOp::read, { key } ) );
        EXPECT_THROW( does( *entity, i, GenericIfOp::set, { key } ), Koi::OpNotSupportedException );
        auto const entries = walk( *entity, i );
        EXPECT_TRUE( entries && !entries->iterNonnull() );
        break;
      }
      case AttributeKind::scalar:
        checkScalar( i );
        break;
      case AttributeKind::child:
        checkChild( i );
        break;
      default:
        checkMembers( i );
    }
}

TEST_P( EntityContract, anObserverLearnsThatItIsGone ) {
  Ptr< Entity > brief = made( type, Name( "brief" ) );
  Told const told( *brief );
  EXPECT_EQ( told.entity(), brief.ptr() );
  brief = nullptr;
  EXPECT_EQ( told.entity(), nullptr );
}

namespace {

/// Changes some attribute of the entity, or of something that it owns. Keeps alive what it refers
/// to.
void changeAny( Entity & root, std::mt19937 & random, std::vector< GenericIfPtr > & kept ) {
  // 1. Somewhere in the tree.
  Entity * entity = &root;
  for( std::vector< Entity * > below{ entity }; !below.empty() && random() % 3 != 0; ) {
    entity = below[random() % below.size()];
    below.clear();
    for( KoiAttribute const & attribute : entity->koiType()->fields )
      attribute.access->eachChild( *entity, [&]( Entity & child ) { below.push_back( &child ); } );
  }
  // 2. Some attribute, some arguments.
  auto const fields = entity->koiType()->fields;
  if( fields.empty() )
    return;
  std::size_t const i = random() % fields.size();
  KoiAttribute const & attribute = fields[i];
  if( !attribute.access->isState() )
    return;
  bool const isKeyed = attribute.access->isCollection();
  bool const isDel = ( isKeyed || attribute.access->hasChildren() ) && random() % 3 == 0;
  unsigned const nth = random() % 4;
  CtorArgs args;
  if( isKeyed && ( isDel || !attribute.keyInValue ) )
    args.push_back( given( attribute.key, nullptr, random() % 4 ) );
  if( !isDel && attribute.access->hasChildren() )
    for( auto const & arg : childArgumentsOf( attribute, args.size(), nth ) )
      args.push_back( arg );
  else if( !isDel )
    args.push_back( given( attribute.type, attribute.target, nth ) );
  for( auto const & arg : args )
    if( entityIn( *arg ) )
      kept.push_back( arg );
  // 3. What a scalar keeps although it refuses it is not for mirrors: it goes.
  bool const isScalar = attribute.access->kind == AttributeKind::scalar;
  GenericIfPtr const before = isScalar ? does( *entity, i, GenericIfOp::read ) : nullptr;
  try {
    does( *entity, i, isDel ? GenericIfOp::del : GenericIfOp::set, args );
  } catch( Koi::RangeException const & ) {
    if( before )
      does( *entity, i, GenericIfOp::set, { before } );
  } catch( Koi::NameInUseException const & ) {
  }
}

void carry( Koi::Mirror & from, Koi::Mirror & to ) {
  Ptr< Koi::NboAttrLog::Out > const bytes( new Koi::NboAttrLog::Out );
  from.flush( *bytes, 1 << 20 );
  to.received( bytes->data(), bytes->size() );
}

}  // namespace

TEST_P( EntityContract, aMirrorStaysEqualOverRandomChangesAndCuts ) {
  unsigned const seed = std::random_device()();
  SCOPED_TRACE( "seed " + std::to_string( seed ) );
  std::mt19937 random( seed );
  std::vector< GenericIfPtr > kept;
  Ptr< Entity > const other = made( type, Name( "an entity" ) );
  Koi::Mirror source( entity, Koi::Mirror::source ), proxy( other, Koi::Mirror::proxy );
  for( int round = 0; round < 30; ++round ) {
    for( unsigned left = random() % 8; left != 0; --left )
      changeAny( *entity, random, kept );
    if( random() % 4 == 0 ) {
      source.restart();
      proxy.restart();
    }
    for( int turns = 0; source.hasOutput() || proxy.hasOutput(); ++turns ) {
      ASSERT_LT( turns, 100 );
      carry( source, proxy );
      carry( proxy, source );
    }
    ASSERT_EQ( allOf( *other ), allOf( *entity ) );
  }
}

INSTANTIATE_TEST_SUITE_P( OfEvery, EntityContract, testing::ValuesIn( entityTypes() ),
                          []( auto const & type ) {
                            std::string name = type.param->name;
                            for( char & c : name )
                              c = c == ':' ? '_' : c;
                            return name;
                          } );

TEST( EntityByName, whatIsNoEntityTypeIsRefusedByName ) {
  try {
    Koi::typeNode( "Bridging::VlanId" )->newEntity( nullptr, Name( "x" ), {} );
    FAIL();
  } catch( Koi::ArgumentException const & e ) {
    EXPECT_STREQ( e.what(), "Bridging::VlanId is no entity type" );
  }
}
