// ValueContractTest.cpp: what holds for every value type there is. Each test walks the registry, so
// a new type is tested by being registered; what a type leaves undone stands in Expected.cpp.

#include <algorithm>
#include <random>

#include <gtest/gtest.h>

#include <koi/Value.h>

#include "contract/Expected.h"

using namespace Tests;
using Koi::CtorArgs;
using Op = Koi::GenericIfOp;

namespace {

/// Calls f with each sample of each type, and says which one failed.
template< class F >
void forEachSample( F && f ) {
  for( KoiType const * type : valueTypes() )
    for( auto const & v : samplesOf( type ) ) {
      SCOPED_TRACE( std::string( type->name ) + " " + textOf( *v ) );
      f( *v );
    }
}

GenericIfPtr read( KoiType const * type, std::string const & text ) {
  return type->genericIfFromStrRep( type, text, nullptr );
}

/// The type and text of what it raises; empty when it raises nothing.
template< class F >
std::string refusal( F && f ) {
  try {
    f();
    return {};
  } catch( Koi::RangeException const & e ) {
    return std::string( "range: " ) + e.what();
  } catch( Koi::ParseException const & e ) {
    return std::string( "parse: " ) + e.what();
  } catch( Koi::ArgumentException const & e ) {
    return std::string( "argument: " ) + e.what();
  } catch( Koi::OpNotSupportedException const & e ) {
    return std::string( "op: " ) + e.what();
  } catch( Koi::UnhashableException const & e ) {
    return std::string( "unhashable: " ) + e.what();
  }
}

/// The text is refused, or it is what its value prints.
void expectOneSpelling( KoiType const * type, std::string const & text ) {
  GenericIfPtr v;
  std::string const why = refusal( [&] { v = read( type, text ); } );
  if( v )
    EXPECT_EQ( textOf( *v ), text );
  else
    EXPECT_TRUE( why.starts_with( "parse: " ) || why.starts_with( "range: " ) ) << text << why;
}

/// A text with one small fault.
std::string mutated( std::string text, std::mt19937 & random ) {
  static constexpr char odd[] = " 0123'\\xnN,-+.:eA}\0\n\x80";
  char const put = odd[random() % ( sizeof odd - 1 )];
  std::size_t const at = random() % ( text.size() + 1 );
  switch( random() % 5 ) {
    case 0:
      return text.insert( at, 1, put );
    case 1:
      return text.erase( std::min( at, text.size() - 1 ), 1 );
    case 2:
      text[std::min( at, text.size() - 1 )] = put;
      return text;
    case 3:
      text[std::min( at, text.size() - 1 )] ^= ' ';
      return text;
    default:
      return text.insert( at, text.substr( at / 2, 1 + random() % 8 ) );
  }
}

TEST( ValueContract, everyTypeHasSamples ) {
  EXPECT_GT( valueTypes().size(), 20u );
  for( KoiType const * type : valueTypes() )
    EXPECT_GE( samplesOf( type ).size(), 2u ) << type->name;
}

TEST( ValueContract, aTextReadsBackAsTheSameValue ) {
  forEachSample( []( GenericIf const & v ) {
    if( exemption( v, readFromText ) )
      return;
    auto const again = read( v.type(), textOf( v ) );
    EXPECT_TRUE( equal( v, *again ) );
    EXPECT_EQ( logOf( *again ), logOf( v ) );
  } );
}

TEST( ValueContract, onlyWhatThePrinterWritesIsRead ) {
  std::mt19937 random( 2 );
  forEachSample( [&]( GenericIf const & v ) {
    if( exemption( v, readFromText ) || exemption( v, oneSpelling ) )
      return;
    std::string const text = textOf( v );
    for( std::size_t size = 0; size < text.size(); ++size ) {
      expectOneSpelling( v.type(), text.substr( 0, size ) );
      if( v.type()->kind == KoiType::structure || isString( v.type() ) ) {
        EXPECT_THROW( read( v.type(), text.substr( 0, size ) ), Koi::Exception );
      }
    }
    EXPECT_THROW( read( v.type(), text + " " ), Koi::ParseException );
    EXPECT_THROW( read( v.type(), " " + text ), Koi::ParseException );
    for( int n = 0; n < 60; ++n )
      expectOneSpelling( v.type(), mutated( text, random ) );
  } );
}

TEST( ValueContract, aTextIsMadeOfTheFieldsTexts ) {
  forEachSample( []( GenericIf const & v ) {
    std::vector< std::string > fields;
    for( auto const & field : fieldsOf( v ) )
      fields.push_back( textOf( *field ) );
    if( v.type()->kind == KoiType::structure )
      EXPECT_EQ( textOf( v ), structureText( v.type(), fields ) );
    else if( v.type()->kind == KoiType::single && !exemption( v, printsItsField ) ) {
      EXPECT_EQ( textOf( v ), fields[0] );
    }
  } );
}

TEST( ValueContract, fieldsOutOfOrderOrMissingAreRefused ) {
  forEachSample( []( GenericIf const & v ) {
    if( v.type()->kind != KoiType::structure )
      return;
    KoiType turned = *v.type(), shorter = *v.type();
    std::vector< Koi::KoiAttribute > attributes( turned.fields.rbegin(), turned.fields.rend() );
    turned.fields = attributes;
    shorter.fields = shorter.fields.first( shorter.fields.size() - 1 );
    std::vector< std::string > fields;
    for( auto const & field : fieldsOf( v ) )
      fields.push_back( textOf( *field ) );
    std::vector< std::string > const back( fields.rbegin(), fields.rend() );
    if( fields.size() > 1 ) {
      EXPECT_THROW( read( v.type(), structureText( &turned, back ) ), Koi::ParseException );
    }
    fields.pop_back();
    EXPECT_THROW( read( v.type(), structureText( &shorter, fields ) ), Koi::ParseException );
  } );
}

TEST( ValueContract, aLogReadsBackAndAShorterOneIsRefused ) {
  std::mt19937 random( 3 );
  forEachSample( [&]( GenericIf const & v ) {
    std::string const log = logOf( v );
    std::string concatenated;
    for( auto const & field : fieldsOf( v ) )
      concatenated += logOf( *field );
    if( !v.type()->fields.empty() ) {
      EXPECT_EQ( log, concatenated );
    }
    EXPECT_EQ( logOf( *ofLog( v.type(), log ) ), log );
    for( std::size_t size = 0; size < log.size(); ++size )
      EXPECT_THROW( ofLog( v.type(), log.substr( 0, size ) ), Koi::ParseException );
    EXPECT_THROW( ofLog( v.type(), log + '\0' ), Koi::ParseException );
    for( int n = 0; n < 40; ++n ) {
      std::string damaged = log, why;
      damaged[random() % log.size()] ^= static_cast< char >( 1 << random() % 8 );
      GenericIfPtr other;
      why = refusal( [&] { other = ofLog( v.type(), damaged ); } );
      if( other )
        EXPECT_TRUE( logOf( *other ) == damaged || exemption( *other, logIsKept ) );
      else
        EXPECT_TRUE( why.starts_with( "parse: " ) || why.starts_with( "range: " ) ) << why;
    }
  } );
}

TEST( ValueContract, equalityOrderAndHashAgree ) {
  for( KoiType const * type : valueTypes() ) {
    auto const all = fewSamplesOf( type, 24 );
    for( auto const & a : all )
      for( auto const & b : all ) {
        SCOPED_TRACE( std::string( type->name ) + " " + textOf( *a ) + " " + textOf( *b ) );
        auto const order = expectedOrder( *a, *b );
        EXPECT_EQ( equal( *a, *b ), order == 0 );
        if( type->less && order != std::partial_ordering::unordered ) {
          EXPECT_EQ( less( *a, *b ), order < 0 );
        }
        if( order == 0 && expectedHashable( type ) ) {
          EXPECT_EQ( a->hash(), b->hash() );
        }
      }
    for( auto const & a : all )
      for( auto const & b : all )
        for( auto const & c : all )
          if( type->less && less( *a, *b ) && less( *b, *c ) ) {
            EXPECT_TRUE( less( *a, *c ) ) << type->name << textOf( *a ) << textOf( *c );
          }
  }
}

TEST( ValueContract, theHashIsMadeOfTheFields ) {
  forEachSample( []( GenericIf const & v ) {
    KoiType const * type = v.type();
    if( expectedHashable( type ) )
      EXPECT_EQ( v.hash(), expectedHash( v ) );
    else
      EXPECT_EQ( refusal( [&] { v.hash(); } ),
                 std::string( "unhashable: " ) + type->name + " is not hashable" );
    if( type->hashable ) {
      auto const called = type->genericIfAttributeOp(
          v, { static_cast< int >( type->fields.size() ), Op::call }, {}, nullptr );
      ASSERT_EQ( called->type(), &Koi::koiTypeU32 );
      EXPECT_EQ( *Koi::valueIn< Koi::U32 >( *called ), v.hash() );
    }
  } );
}

/// A refused number's value of a single-field type: as a log gives it, in range or not.
GenericIfPtr asRead( KoiType const * type, GenericIf const & primitive ) {
  return ofLog( type, logOf( primitive ) );
}

TEST( ValueContract, aSingleFieldTypeRefusesInItsOwnWordsFromTextAndFromArguments ) {
  for( KoiType const * type : valueTypes() ) {
    if( type->kind != KoiType::single )
      continue;
    std::string const own =
        std::string( type->name ).substr( std::string( type->name ).rfind( ':' ) + 1 );
    for( auto const & primitive : samplesOf( type->fields[0].type ) ) {
      SCOPED_TRACE( std::string( type->name ) + " " + textOf( *primitive ) );
      std::string const fromArguments =
          refusal( [&] { type->genericIfFromCtorArgs( type, { primitive }, nullptr ); } );
      if( !fromArguments.empty() ) {
        EXPECT_TRUE( fromArguments.starts_with( "range: " + own + "::" + type->fields[0].name ) &&
                     fromArguments.ends_with( " not allowed" ) )
            << fromArguments;
      }
      auto const v = asRead( type, *primitive );
      EXPECT_EQ( logOf( *v ), logOf( *primitive ) ) << "a log is not checked";
      if( !exemption( *v, readFromText ) && !exemption( *v, printsItsField ) ) {
        EXPECT_EQ( refusal( [&] { read( type, textOf( *primitive ) ); } ), fromArguments );
      }
    }
    if( !exemption( *samplesOf( type )[0], printsItsField ) && !isString( type->fields[0].type ) &&
        type->fields[0].type != &Koi::koiTypeSeconds && type->fields[0].type != &Koi::koiTypeBool )
      for( char const * wide : { "65536", "4294967296", "18446744073709551616" } )
        if( auto const why = refusal( [&] { read( type, wide ); } ); !why.empty() ) {
          EXPECT_TRUE( why.starts_with( "range: " ) ) << type->name << " " << why;
        }
  }
}

TEST( ValueContract, aStructureRefusesAFieldThatIsOutOfItsRange ) {
  for( KoiType const * type : valueTypes() )
    for( std::size_t i = 0; type->kind == KoiType::structure && i < type->fields.size(); ++i ) {
      auto const & field = type->fields[i];
      if( field.type->kind != KoiType::single )
        continue;
      auto const fields = fieldsOf( *samplesOf( type )[0] );
      for( auto const & primitive : samplesOf( field.type->fields[0].type ) ) {
        SCOPED_TRACE( std::string( type->name ) + " " + field.name + " " + textOf( *primitive ) );
        auto const why = refusal(
            [&] { field.type->genericIfFromCtorArgs( field.type, { primitive }, nullptr ); } );
        bool const zero = textOf( *primitive ) == "0" && field.zeroAdmitted;
        CtorArgs args( fields.begin(), fields.end() );
        args[i] = asRead( field.type, *primitive );
        std::vector< std::string > texts;
        std::string log;
        for( auto const & arg : args ) {
          texts.push_back( textOf( *arg ) );
          log += logOf( *arg );
        }
        auto const fromArgs =
            refusal( [&] { type->genericIfFromCtorArgs( type, args, nullptr ); } );
        auto const fromLog = refusal( [&] { ofLog( type, log ); } );
        EXPECT_EQ( fromArgs, zero ? "" : why );
        EXPECT_EQ( fromLog, zero ? "" : why );
        if( !exemption( *args[i], readFromText ) && !exemption( *args[i], printsItsField ) ) {
          auto const fromText = refusal( [&] { read( type, structureText( type, texts ) ); } );
          EXPECT_EQ( fromText, zero || why.empty()
                                   ? ""
                                   : "range: attribute '" + std::string( field.name ) +
                                         "': " + why.substr( sizeof "range: " - 1 ) );
        }
      }
    }
}

TEST( ValueContract, argumentsOfTheWrongNumberOrTypeAreRefused ) {
  struct Foreign final : GenericIf {
    KoiType const * type() const override { return &Koi::koiTypeBool; }
    void const * voidPtrIs( KoiType const * ) const override { return nullptr; }
    Koi::U32 hash() const override { return 0; }
    Koi::String8 strRep() const override { return ""; }
  };
  for( KoiType const * type : valueTypes() ) {
    SCOPED_TRACE( type->name );
    auto const v = samplesOf( type )[0];
    auto const fields = fieldsOf( *v );
    CtorArgs args( fields.begin(), fields.end() );
    if( args.empty() )
      args.push_back( v );
    auto const made = [&] { type->genericIfFromCtorArgs( type, args, nullptr ); };
    std::string const name = type->name, takes = std::to_string( args.size() ),
                      wanted = args.back()->type()->name;
    EXPECT_EQ( refusal( made ), "" );
    args.back() = nullptr;
    EXPECT_EQ( refusal( made ), "argument: " + name + ": argument " + takes + " must be a " +
                                    wanted + ", not null" );
    args.back() = new Foreign;
    EXPECT_EQ( refusal( made ), "argument: " + name + ": argument " + takes + " must be a " +
                                    wanted + ", not Koi::Bool" );
    args.push_back( v );
    EXPECT_EQ( refusal( made ), "argument: " + name + " takes " + takes + " arguments, not " +
                                    std::to_string( args.size() ) );
    args.clear();
    EXPECT_EQ( refusal( made ), "argument: " + name + " takes " + takes + " arguments, not 0" );
  }
}

TEST( ValueContract, anEntryPointHandlesItsOwnTypeOnly ) {
  for( KoiType const * type : valueTypes() ) {
    SCOPED_TRACE( type->name );
    KoiType const other = *type;
    auto const v = samplesOf( type )[0];
    KoiType const * bytes = &Koi::koiTypeU8 == type ? &Koi::koiTypeBool : &Koi::koiTypeU8;
    auto const foreign = samplesOf( bytes )[0];
    auto expectNotHandled = []( auto call ) {
      bool notHandled = false;
      EXPECT_EQ( call( &notHandled ), nullptr );
      EXPECT_TRUE( notHandled );
      EXPECT_EQ( call( nullptr ), nullptr );
    };
    expectNotHandled(
        [&]( bool * flag ) { return type->genericIfFromStrRep( &other, "", flag ); } );
    expectNotHandled(
        [&]( bool * flag ) { return type->genericIfFromCtorArgs( &other, {}, flag ); } );
    expectNotHandled(
        [&]( bool * flag ) { return type->genericIfFromVoidPointer( &other, "", flag ); } );
    expectNotHandled(
        [&]( bool * flag ) { return type->genericIfAttributeOp( *foreign, {}, {}, flag ); } );
    int const numAttributes = static_cast< int >( type->fields.size() ) + type->hashable;
    for( int attribute : { numAttributes, numAttributes + 7, -2 } )
      expectNotHandled( [&]( bool * flag ) {
        return type->genericIfAttributeOp( *v, { attribute, Op::read }, {}, flag );
      } );
    EXPECT_EQ( v->voidPtrIs( bytes ), nullptr );
    EXPECT_EQ( v->voidPtrIs( nullptr ), nullptr );

    bool notHandled = false;
    auto const copy = type->genericIfFromVoidPointer( type, v->voidPtrIs( type ), &notHandled );
    EXPECT_FALSE( notHandled );
    EXPECT_NE( copy, v );
    EXPECT_EQ( logOf( *copy ), logOf( *v ) );
    EXPECT_EQ( copy->type(), type );
  }
}

TEST( ValueContract, whatATypeCannotDoIsRefused ) {
  for( KoiType const * type : valueTypes() ) {
    SCOPED_TRACE( type->name );
    auto const v = samplesOf( type )[0];
    auto expectRefused = [&]( Op op, CtorArgs const & args, std::string const & text ) {
      EXPECT_EQ( refusal( [&] { type->genericIfAttributeOp( *v, op, args, nullptr ); } ),
                 "op: operation " + text + " is not supported" );
    };
    KoiType const * bytes = &Koi::koiTypeU8 == type ? &Koi::koiTypeBool : &Koi::koiTypeU8;
    expectRefused( { Op::noAttribute, Op::read }, {}, "0" );
    expectRefused( { Op::noAttribute, Op::call }, {}, "8" );
    expectRefused( { Op::noAttribute, Op::equal }, {}, "9" );
    expectRefused( { Op::noAttribute, Op::equal }, { nullptr }, "9" );
    expectRefused( { Op::noAttribute, Op::equal }, { samplesOf( bytes )[0] }, "9" );
    expectRefused( { Op::noAttribute, Op::equal }, { v, v }, "9" );
    expectRefused( { Op::noAttribute, 7 }, { v }, "7" );
    int const hash = static_cast< int >( type->fields.size() );
    for( int i = 0; i < hash + type->hashable; ++i )
      for( Koi::U32 code : { 0u, 1u, 8u, 9u } )
        if( code != ( i == hash ? Op::call : Op::read ) )
          expectRefused( { i, code }, { v },
                         std::to_string( code ) + " on attribute " + std::to_string( i ) );
  }
}

TEST( ValueContract, aTypeNodeTellsTheTypesOfItsFields ) {
  forEachSample( []( GenericIf const & v ) {
    auto const & fields = v.type()->fields;
    for( std::size_t i = 0; i < fields.size(); ++i )
      EXPECT_EQ( fieldOf( v, i )->type(), fields[i].type ) << fields[i].name;
  } );
}

}  // namespace
