// EntityFromJsonTest.cpp: entities of every construct out of JSON: what a good text makes of them,
// and what each bad one is told.
#include <gtest/gtest.h>

#include <limits>

#include <Coredb/Dir.h>
#include <Everything.h>
#include <koi/AttributeAccess.h>
#include <koi/GenericEntity.h>
#include <koi/Mirror.h>
#include <koijson/EntityFromJson.h>
#include <koijson/NearestName.h>
#include <koijson/ValueName.h>
#include <koijson/ValueToJson.h>

using namespace Everything;
using Koi::entityFromJson;
using Koi::Name;
using Koi::Ptr;

namespace {

/// Why that text is refused; empty when it is not.
std::string refusal( Koi::Entity & entity, std::string_view text ) {
  Koi::U64 const before = entity.koiChanges();
  try {
    entityFromJson( entity, text );
    return {};
  } catch( Koi::JsonException const & e ) {
    EXPECT_EQ( entity.koiChanges(), before ) << "a refused text changes nothing";
    return e.what();
  }
}

struct EntityFromJson : testing::Test {
  Ptr< Room > const room = roomFactory( Name( "room" ) );
};

struct Visits : Room::NotifieeConst {
  std::vector< std::string > all;
  void onLamp( Name const & name ) override {
    all.push_back( "lamp " + std::string( name.view() ) );
  }
  void onColorCount( Color color ) override {
    all.push_back( std::string( stringValue( color ).view() ) + " " +
                   std::to_string( notifier()->colorCount( color ) ) );
  }
};

}  // namespace

TEST_F( EntityFromJson, everyConstructIsFilled ) {
  entityFromJson( *room, R"json( {
    "shelf": {
      "7": {
        "wide": true,
        "number": 7,
        "book": {
          "Emma": { "spot": { "shelf": 3 }, "weight": 0.5 },
          "Ulysses": {
            "title": "Ulysses",
            "spot": "Value('Everything::Spot', ** {'shelf': 9, 'position': 2})"
          }
        }
      },
      "8": {}
    },
    "lamp": {
      "a/b": { "lit": true, "watts": 100, "label": "caf\u00e9", "maker": "me", "glow": 2,
               "color": "red", "spot": { "position": 4294967295 } }
    },
    "colorCount": [ { "key": "white", "value": 1 }, { "key": "red", "value": 0 } ],
    "visitor": [ 5, 6, 5 ],
    "ceiling": { "dimmed": 7 },
    "finding": { "finder": "Ann" }
  } )json" );
  Shelf const & shelf = *room->shelf( ShelfNumber( 7 ) );
  EXPECT_TRUE( shelf.wide() );
  EXPECT_EQ( shelf.book( "Emma" ), Book( "Emma", Spot( ShelfNumber( 3 ), 0 ), 0.5 ) );
  EXPECT_EQ( shelf.book( "Ulysses" ).spot(), Spot( ShelfNumber( 9 ), 2 ) );
  EXPECT_FALSE( room->shelf( ShelfNumber( 8 ) )->wide() );
  Lamp const & lamp = *room->lamp( Name( "a/b" ) );
  EXPECT_TRUE( lamp.lit() );
  EXPECT_EQ( lamp.watts(), 100 );
  EXPECT_EQ( lamp.label(), "caf\xc3\xa9" );
  EXPECT_EQ( lamp.maker(), Name( "me" ) );
  EXPECT_EQ( lamp.glow(), 2.0 );
  EXPECT_EQ( lamp.color(), red );
  EXPECT_EQ( lamp.spot(), Spot( ShelfNumber( 1 ), 4294967295u ) ) << "what is left out stays";
  EXPECT_EQ( room->colorCount( white ), 1u );
  EXPECT_TRUE( room->colorCount().contains( red ) );
  EXPECT_EQ( room->visitor().size(), 3u );
  EXPECT_EQ( room->visitor( 1 ), ShelfNumber( 6 ) );
  EXPECT_EQ( room->ceiling()->dimmed(), 7 );
  EXPECT_EQ( room->ceiling()->name(), Name( "ceiling" ) );
  EXPECT_EQ( room->finding()->finder(), "Ann" );
}

TEST_F( EntityFromJson, whatIsThereIsFilledFurtherAndToldOfOnce ) {
  entityFromJson( *room, R"( { "lamp": { "a": { "watts": 3 } }, "colorCount": { "red": 1 },
                               "visitor": [ 1, 2 ] } )" );
  Ptr< Lamp > const lamp = room->lamp( Name( "a" ) );
  room->visitorDel( 0 );
  Visits visits;
  visits.notifierIs( room );
  entityFromJson( *room, R"( { "lamp": { "a": { "lit": true }, "b": {} }, "visitor": [ 8, 9 ],
                               "colorCount": { "red": 1, "white": 2 } } )" );
  EXPECT_EQ( room->lamp( Name( "a" ) ), lamp );
  EXPECT_TRUE( lamp->lit() );
  EXPECT_EQ( lamp->watts(), 3 );
  EXPECT_EQ( visits.all, ( std::vector< std::string >{ "white 2", "lamp b" } ) );
  EXPECT_EQ( room->visitor( 1 ), ShelfNumber( 8 ) ) << "the head is where it was";
  EXPECT_EQ( room->visitor( 2 ), ShelfNumber( 9 ) );

  Koi::U64 const changes = room->koiChanges();
  entityFromJson( *room, R"( { "visitor": [ 8, 9 ], "colorCount": { "red": 1 } } )" );
  EXPECT_EQ( room->koiChanges(), changes ) << "the same once more is no change";
}

TEST_F( EntityFromJson, eachRefusalNamesItsPlaceAndChangesNothing ) {
  entityFromJson( *room, R"( { "shelf": { "7": { "wide": true } } } )" );
  struct {
    char const *text, *why;
  } const cases[] = {
      { "7", "an object was expected, not a number" },
      { R"({ "colourCount": {} })",
        R"(/colourCount: Everything::Room has no attribute "colourCount"; did you mean "colorCount"?)" },
      { R"({ "x": 1 })", R"(/x: Everything::Room has no attribute "x")" },
      { R"({ "shelf": true })", "/shelf: an object was expected, not true" },
      { R"({ "shelf": { "7": null } })", "/shelf/7: an object was expected, not null" },
      { R"({ "shelf": { "100": {} } })", "/shelf/100: ShelfNumber::value < 1 or > 99 not allowed" },
      { R"({ "shelf": { "07": {} } })", "/shelf/07: a number was expected at '07'" },
      { R"({ "shelf": { "7": { "wide": false } } })",
        "/shelf/7/wide: Everything::Shelf::wide is True here for good, not False" },
      { R"({ "shelf": { "9": { "number": 8 } } })",
        "/shelf/9/number: Everything::Shelf::number is 9 here for good, not 8" },
      { R"({ "shelf": { "7": { "light": "x" } } })",
        "/shelf/7/light: Everything::Shelf::light refers to another Everything::Lamp, which JSON "
        "cannot" },
      { R"({ "shelf": { "7": { "book": { "A": { "title": "B" } } } } })",
        "/shelf/7/book/A/title: Everything::Book::title is 'A' here, not 'B'" },
      { R"({ "shelf": { "7": { "book": { "A": {} } } } })",
        "/shelf/7/book/A: ShelfNumber::value < 1 or > 99 not allowed; left out: spot" },
      { R"({ "shelf": { "7": { "book": { "A": { "spott": {} } } } } })",
        R"(/shelf/7/book/A/spott: Everything::Book has no field "spott"; did you mean "spot"?)" },
      { R"({ "lamp": { "a": { "lit": 1 } } })",
        "/lamp/a/lit: true or false was expected, not a number" },
      { R"({ "lamp": { "a": { "lit": true, "watts": 101 } } })",
        "/lamp/a/watts: Lamp::watts > Lamp::wattsMax not allowed" },
      { R"({ "lamp": { "a": { "watts": 65536 } } })", "/lamp/a/watts: 65536 > 65535 not allowed" },
      { R"({ "lamp": { "a": { "watts": -1 } } })", "/lamp/a/watts: -1 < 0 not allowed" },
      { R"({ "lamp": { "a": { "watts": 1.5 } } })",
        "/lamp/a/watts: a whole number was expected, not 1.5" },
      { R"({ "lamp": { "a": { "watts": "1" } } })",
        "/lamp/a/watts: a number was expected, not a string" },
      { R"({ "lamp": { "a": { "dimmed": 101 } } })",
        "/lamp/a/dimmed: Lamp::dimmed > Lamp::wattsMax not allowed" },
      { R"({ "lamp": { "a": { "label": "a long label" } } })",
        "/lamp/a/label: Lamp::bytes > 8 not allowed" },
      { R"({ "lamp": { "a": { "glow": true } } })",
        "/lamp/a/glow: a number was expected, not true" },
      { R"({ "lamp": { "a": { "maker": 1 } } })",
        "/lamp/a/maker: a string was expected, not a number" },
      { R"({ "lamp": { "a": { "color": 5 } } })",
        "/lamp/a/color: a string was expected, not a number" },
      { R"({ "lamp": { "a": { "color": "green" } } })",
        R"(/lamp/a/color: there is no "green" in Everything::Color (white, amber, red))" },
      { R"({ "lamp": { "a": { "wattsMax": 1 } } })",
        "/lamp/a/wattsMax: Everything::Lamp::wattsMax cannot be set: it is a constant, or made of "
        "other "
        "attributes" },
      { R"({ "mainLamp": {} })",
        "/mainLamp: Everything::Room::mainLamp refers to another Everything::Lamp, which JSON "
        "cannot" },
      { R"({ "colorCount": [ { "key": "red" } ] })",
        R"(/colorCount/0: an object of "key" and "value" was expected, not an object)" },
      { R"({ "colorCount": [ { "key": "red", "value": 1 }, { "key": "red", "value": 1 } ] })",
        "/colorCount/1/key: red stands there twice" },
      { R"({ "shelf": [ { "key": 0, "value": {} } ] })",
        "/shelf/0/key: ShelfNumber::value < 1 or > 99 not allowed" },
      { R"({ "visitor": { "0": 1 } })", "/visitor: an array was expected, not an object" },
      { R"({ "visitor": [ 1, 0 ] })", "/visitor/1: ShelfNumber::value < 1 or > 99 not allowed" },
      { R"({ "ceiling": [] })", "/ceiling: an object was expected, not an array" },
      { R"({ "finding": { "name": "n", "finder": 1 } })",
        "/finding/finder: a string was expected, not a number" },
      { R"({ "lamp": { "a": {}, "a": {} } })", R"(/lamp: "a" stands there twice)" },
      { R"({ "visitor": [ 1, { "b": 1, "b": 2 } ] })", R"(/visitor/1: "b" stands there twice)" },
      { R"({ "lamp": {}, "lamp": {} })", R"("lamp" stands there twice)" },
  };
  for( auto const & c : cases )
    EXPECT_EQ( refusal( *room, c.text ), c.why );
  EXPECT_EQ( room->lamp().size(), 0u );
  std::string const tooMany = "{ \"visitor\": [ 1" + [] {
    std::string more;
    for( int i = 0; i < 256; ++i )
      more += ", 1";
    return more;
  }() + " ] }";
  EXPECT_EQ( refusal( *Coredb::dirFactory( Koi::Name( "dir" ) ), R"({ "entity": { "a": {} } })" ),
             "/entity: Coredb::Dir::entity cannot be set: its children are of any type" );
  EXPECT_EQ( refusal( *room, tooMany ), "/visitor: a queue of more than 256 members" );
}

TEST_F( EntityFromJson, whatIsNoJsonIsRefusedByLineAndColumn ) {
  EXPECT_TRUE( refusal( *room, "{\n  \"lamp\": {},\n}" )
                   .starts_with( "parse error at line 3, column 1: " ) );
  EXPECT_TRUE( refusal( *room, "" ).starts_with( "parse error at line 1, column 1: " ) );
  EXPECT_TRUE( refusal( *room, "{} {}" ).starts_with( "parse error at line 1, column 4: " ) );
  EXPECT_TRUE(
      refusal( *room, "{ \"lamp\": { \"\xff\": {} } }" ).starts_with( "parse error at line 1" ) );
  EXPECT_EQ( refusal( *room, R"({ "glow": 1e999 })" ), "number overflow parsing '1e999'" );
  // Deep nesting costs memory, not stack.
  EXPECT_NE( refusal( *room, std::string( 100'000, '[' ) ), "" );
}

TEST_F( EntityFromJson, aReadOnlyProxyRefuses ) {
  Ptr< Room > const proxy = roomFactory( Name( "room" ) );
  Koi::Mirror from( room, Koi::Mirror::source ), to( proxy, Koi::Mirror::proxy, false );
  EXPECT_EQ( refusal( *proxy, R"({ "visitor": [ 1 ] })" ),
             "/visitor/0: write-update from readonly proxy: room" );
}

TEST( ValueToJson, isTheFormThatIsReadAndNamesAreWithoutQuotes ) {
  Book const book( R"(the "E")", Spot( ShelfNumber( 3 ), 7 ), 0.5 );
  struct {
    Koi::GenericIfPtr value;
    char const *json, *name;
  } const cases[] = {
      { Koi::genericIf( true ), "true", "True" },
      { Koi::genericIf( -2.5e-9 ), "-2.5e-09", "-2.5e-09" },
      { Koi::genericIf( std::numeric_limits< double >::infinity() ), "null", "inf" },
      { Koi::genericIf( ShelfNumber( 9 ) ), "9", "9" },
      { Koi::genericIf( Color::red ), "\"red\"", "red" },
      { Koi::genericIf( static_cast< Color >( 77 ) ), "\"77\"", "77" },
      { Koi::genericIf( Koi::String8( "caf\xc3\xa9\n" ) ), "\"caf\xc3\xa9\\n\"",
        "'caf\\xc3\\xa9\\n'" },
      { Koi::genericIf( Name( "eth1" ) ), "\"eth1\"", "eth1" },
      { Koi::genericIf( Name( "" ) ), "\"\"", "''" },
      { Koi::genericIf( book ),
        R"({"title": "the \"E\"", "spot": {"shelf": 3, "position": 7}, "weight": 0.5})", nullptr },
  };
  for( auto const & c : cases ) {
    std::string json;
    Koi::ValueToJson( c.value->type() ).append( json, *c.value );
    EXPECT_EQ( json, c.json );
    if( c.name ) {
      EXPECT_EQ( Koi::valueName( *c.value ), c.name );
    }
  }
}

TEST( NearestName, isTheOneOfFewestChangesWithinAThird ) {
  std::vector< std::string_view > const names{ "vlanConfig", "fdbConfig", "x" };
  EXPECT_EQ( Koi::nearestName( "vlanConfg", names ), "vlanConfig" );
  EXPECT_EQ( Koi::nearestName( "fdbconfigs", names ), "fdbConfig" );
  EXPECT_EQ( Koi::nearestName( "bridge", names ), "" );
  EXPECT_EQ( Koi::nearestName( "", names ), "" );
}
