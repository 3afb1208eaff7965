// ErrorTest.cpp: every error that a model's author can cause, by its text and place.
#include <gtest/gtest.h>
#include <koigen/Checker.h>

#include <algorithm>
#include <map>
#include <string>

namespace {

using namespace Koigen;

/// What is said about a model of one module; empty when it is accepted.
std::string errorsOf( std::string const & text, std::string const & file = "M.koi" ) {
  try {
    parsedText( text, file );
  } catch( ModelError const & e ) {
    return e.what();
  }
  return {};
}

struct Case {
  char const * model;
  char const * error;
};

class Errors : public testing::TestWithParam< Case > {};

/// A case is what stands in a namespace behind some declarations to speak of; it begins in line 50.
std::string before() {
  std::string text = R"(module M;

namespace N {

/// d
value Vlan : u16 in 1..4094;
/// d
value Tag : u16;
/// d
unhashed value Raw : u16;
/// d
value Label : Koi::String8 max 3;
/// d
enum Mode { off, on }
/// d
ordered value Pair {
  a : Vlan;       /// d
  b : Tag;        /// d
}
/// d
value Loose {
  a : Vlan;       /// d
  m : Mode settable;    /// d
}
/// d
unhashed value Bare {
  a : u16;        /// d
}
/// d
foreign entity Base( Vlan vlan ) "n/Base.h";
/// d
foreign value Far "n/Far.h";
/// d
entity Named {
  attr used : bool;             /// d
  hash by[ Vlan ] : bool;       /// d
  const most : u16 = 5;         /// d
  virtual function kind() : u8; /// d
}
/// d
entity Keyed {
  param vlan : Vlan;            /// d
  param pair : Pair settable;   /// d
}
/// d
reactor Sm {
  start begin;
}
)";
  return text + std::string( 49 - std::count( text.begin(), text.end(), '\n' ), '\n' );
}

TEST_P( Errors, areToldWhereTheyStand ) {
  std::string const error = GetParam().error;
  EXPECT_EQ( errorsOf( before() + GetParam().model + "\n}\n" ),
             error.empty() ? "" : "M.koi:" + error );
}

// clang-format off
INSTANTIATE_TEST_SUITE_P( InNames, Errors, testing::Values(
  Case{ "/// d\nvalue Vlan : u8;", "51:7: type 'N::Vlan' is already declared at M.koi:6:7" },
  Case{ "/// d\nenum Other { on }", "51:14: enumerator 'N::on' is already declared at M.koi:14:18" },
  Case{ "/// d\nenum E { a, a }", "51:13: enumerator 'N::a' is already declared at M.koi:51:10" },
  Case{ "function f( Vlan v ) : bool; /// d\nfunction f( Vlan w ) : u8; /// d",
        "51:10: function 'N::f(Vlan,)' is already declared at M.koi:50:10" },
  Case{ "function f( Vlan v ) : bool; /// d\nfunction f( Tag v ) : bool; /// d", "" },
  Case{ "/// d\nvalue vlan2 : u8;", "51:7: 'vlan2' must begin with a capital, for it is a type" },
  Case{ "/// d\nvalue KoiX : u8;", "51:7: 'KoiX' begins with koi, which is the generator's own" },
  Case{ "/// d\nvalue A {\n  class : u8;  /// d\n}", "52:3: 'class' is a word of C++" },
  Case{ "/// d\nvalue A {\n  _x : u8;  /// d\n}",
        "52:3: '_x' begins or ends with an underscore or has two together: such names are the "
        "generator's own" },
  Case{ "/// d\nvalue A {\n  Big : u8;  /// d\n}",
        "52:3: 'Big' begins with a capital, which is for types" },
  Case{ "/// d\nvalue A {\n  hash : u8;  /// d\n}", "52:3: 'hash' is a name of every value" },
  Case{ "/// d\nentity A {\n  attr parent : u8;  /// d\n}", "52:8: 'parent' is a name of every entity" },
  Case{ "/// d\nvalue A {\n  a : u8;  /// d\n  a : u8;  /// d\n}", "53:3: 'A' has a member 'a' already" },
  Case{ "/// d\nentity A {\n  attr a : u8;  /// d\n  attr aIs : u8;  /// d\n}",
        "53:8: 'aIs' and 'a' would both generate 'aIs'" },
  Case{ "/// d\nentity A {\n  queue a[ u8 ] : bool;  /// d\n  attr aDelAll : u8;  /// d\n}",
        "53:8: 'aDelAll' and 'a' would both generate 'aDelAll'" },
  Case{ "/// d\nreactor A {\n  start a;\n  attr isZombie : u8;  /// d\n}",
        "53:8: 'isZombie' is a name of every reactor" },
  Case{ "value A : u8;", "50:7: 'A' has no documentation" },
  Case{ "/// d\nvalue A {\n  a : u8;\n}", "52:3: 'a' has no documentation" },
  Case{ "/// d\\\nvalue A : u8;", "51:7: the documentation of 'A' has a line that ends in '\\'" },
  Case{ "/// d\nforeign value A : u8;", "51:15: the foreign 'A' names no header" },
  Case{ "/// d\nvalue A \"a.h\";", "51:7: 'A' names a header: is it foreign?" } ) );

INSTANTIATE_TEST_SUITE_P( InValues, Errors, testing::Values(
  Case{ "/// d\nvalue A : Nothing;", "51:11: there is no type 'Nothing'" },
  Case{ "/// d\nvalue A : Vlan;", "51:11: 'Vlan' is no primitive type" },
  Case{ "/// d\nordered value A : u8;", "51:15: 'A' has one field and is ordered anyway" },
  Case{ "/// d\nvalue A : u16 in 5..1;", "51:18: the range 5..1 is empty: its bounds are reversed" },
  Case{ "/// d\nvalue A : u8 in 0..256;", "51:17: '256' does not fit u8" },
  Case{ "/// d\nvalue A : u8 in -1..5;", "51:17: '-1' does not fit u8" },
  Case{ "/// d\nvalue A : u8 in 0..255;", "51:17: the range admits every u8: leave it out" },
  Case{ "/// d\nvalue A : u8 in low..5;",
        "51:17: 'low' is neither a whole number nor a constant of 'A'" },
  Case{ "/// d\nvalue A : u8 in 1.5..2;",
        "51:17: '1.5' is neither a whole number nor a constant of 'A'" },
  Case{ "/// d\nvalue A : u8 in low..5 {\n  const low : u16 = 1; /// d\n}",
        "51:17: 'low' is not a constant of type 'u8'" },
  Case{ "/// d\nvalue A : bool positive;", "51:16: a bool has no range" },
  Case{ "/// d\nvalue A : Koi::Seconds in 0..1;", "51:27: a Koi::Seconds has no range" },
  Case{ "/// d\nvalue A : u16 max 10;", "51:19: 'max' is for strings: write 'in 0..10'" },
  Case{ "/// d\nvalue A : Koi::String8 max x;", "51:28: 'x' is not a length" },
  Case{ "/// d\nvalue A {\n}", "51:7: 'A' has no fields" },
  Case{ "/// d\nvalue A {\n  a : A; /// d\n}", "52:7: 'A' contains itself" },
  Case{ "/// d\nvalue A {\n  a : B; /// d\n}\n/// d\nvalue B : u8;",
        "52:7: 'B' is declared below: it must stand before its use" },
  Case{ "/// d\nvalue A {\n  a : Named; /// d\n}", "52:7: a value cannot hold the entity 'Named'" },
  Case{ "/// d\nvalue A {\n  a : ref Named; /// d\n}", "52:11: a value holds values, not pointers" },
  Case{ "/// d\nvalue A {\n  a : Sm; /// d\n}", "52:7: 'Sm' is a reactor: a reactor holds it by 'own' or 'weak', an entity by 'reactor'" },
  Case{ "/// d\nordered value A {\n  a : Loose; /// d\n}", "52:7: 'A' is ordered, but 'Loose' is not" },
  Case{ "/// d\nvalue A {\n  a : Bare; /// d\n}",
        "52:7: 'Bare' has no hash, so 'A' must be declared 'unhashed'" },
  Case{ "/// d\nvalue A {\n  a : Raw; /// d\n}", "" },
  Case{ "/// d\nvalue A {\n  a : Tag or 0; /// d\n}", "52:7: 'or 0' needs a type that refuses 0" },
  Case{ "/// d\nvalue A {\n  a : u8; /// d\n  operation f(); /// d\n}",
        "53:13: a value has only functions and static functions" },
  Case{ "/// d\nvalue A {\n  a : u8; /// d\n  function f(); /// d\n}",
        "53:12: 'f' returns nothing: make it an operation" },
  Case{ "/// d\nvalue A : u8 {\n  constructor( Vlan a ); /// d\n  constructor( Vlan b ); /// d\n}",
        "53:3: 'A' has this constructor already" },
  Case{ "function f( Named n ) : bool; /// d",
        "50:13: an entity is not copied: write 'Named const &'" },
  Case{ "function f() : Named; /// d", "50:16: an entity is not copied: write 'ref Named'" },
  Case{ "function f() : weak Named; /// d", "50:21: a function returns a value or a 'ref'" },
  Case{ "function f( ref Vlan v ) : bool; /// d",
        "50:17: 'Vlan' is a value: only entities are pointed to" },
  Case{ "/// d\ntable value A : u8;",
        "51:13: a table's value is a structure whose first field is its key" },
  Case{ "/// d\nforeign table value A \"a.h\";",
        "51:21: a table's value is a structure whose first field is its key" },
  Case{ "/// d\nvalue A hashed in \"a.h\" {\n  a : u8; /// d\n}",
        "51:9: 'hashed in' is for the key of a table's value" },
  Case{ "/// d\nforeign value A \"a.h\" of 0 bytes;", "51:26: '0' is not a size from 1 to 4096" },
  Case{ "/// d\nforeign value A \"a.h\" of 4097 bytes;",
        "51:26: '4097' is not a size from 1 to 4096" },
  Case{ "/// d\ntable value A {\n  a : u8; /// d\n  b : Koi::String8; /// d\n}",
        "53:7: 'b' cannot lie in a slot: Koi::String8 has no fixed size" },
  Case{ "/// d\ntable value A {\n  a : Koi::Name; /// d\n  b : Far; /// d\n}",
        "52:7: 'a' cannot lie in a slot: Koi::Name has no fixed size\n"
        "M.koi:53:7: 'b' cannot lie in a slot: N::Far has no fixed size" },
  Case{ "/// d\nvalue A {\n  l : Label; /// d\n}\n/// d\ntable value B {\n  a : A; /// d\n}",
        "56:7: 'a.l' cannot lie in a slot: Koi::String8 has no fixed size" },
  Case{ "/// d\nforeign value A \"a.h\" of 4096 bytes;\n/// d\ntable value B {\n  a : A; /// d\n"
        "  b : u8; /// d\n}",
        "53:13: 'B' is larger than the 4096 bytes that may lie in a slot" },
  Case{ "/// d\ntable value A {\n  a : Raw; /// d\n}", "52:7: the key type 'Raw' has no hash" },
  Case{ "/// d\ntable value A {\n  a : u8 settable; /// d\n}",
        "52:3: the key of a table's value is not 'settable'" },
  Case{ "/// d\ntable value A012345678901234567890123456789012345678901234567890123456789 {\n"
        "  a : u8; /// d\n}",
        "51:13: the name 'N::A012345678901234567890123456789012345678901234567890123456789' of a "
        "table's value has more than 63 characters" },
  Case{ "/// d\ntable value A01234567890123456789012345678901234567890123456789012345678 {\n"
        "  a : u8; /// d\n}",
        "" },
  Case{ "/// d\ntable value A {\n  a : u8; /// d\n  m : Loose; /// d\n}", "" },
  Case{ "/// d\nenum E { a = 1, b = 1 }", "51:17: 'b' has the number of 'a'" },
  Case{ "/// d\nenum E { a = 4294967295, b }", "51:26: the number of 'b' does not fit u32" },
  Case{ "/// d\nenum E { a = -1 }", "51:10: '-1' does not fit u32" } ) );
// clang-format on

// Each case is an attribute of an entity; it begins in column 3 of line 52.
class Members : public testing::TestWithParam< Case > {};

TEST_P( Members, areToldWhereTheyStand ) {
  std::string const error = GetParam().error;
  EXPECT_EQ( errorsOf( before() + "/// d\nentity E {\n  " + GetParam().model + " /// d\n}\n}\n" ),
             error.empty() ? "" : "M.koi:" + error );
}

// clang-format off
INSTANTIATE_TEST_SUITE_P( InDefaults, Members, testing::Values(
  Case{ "attr a : u16 = 65536;", "52:18: '65536' does not fit u16" },
  Case{ "attr a : u16 = 010;", "52:18: a value of type 'u16' was expected" },
  Case{ "attr a : u16 = \"x\";", "52:18: a value of type 'u16' was expected" },
  Case{ "attr a : bool = 1;", "52:19: a value of type 'bool' was expected" },
  Case{ "attr a : Koi::String8 = 1;", "52:27: a value of type 'Koi::String8' was expected" },
  Case{ "attr a : Koi::Seconds = 300.5;", "" },
  Case{ "attr a : Koi::Seconds = on;", "52:27: a value of type 'Koi::Seconds' was expected" },
  Case{ "attr a : Koi::Name = \"x\";", "52:24: a Koi::Name has no default" },
  Case{ "attr a : Mode = maybe;", "52:19: an enumerator of 'N::Mode' was expected" },
  Case{ "attr a : Vlan = 1;", "52:19: a value of type 'N::Vlan' was expected" },
  Case{ "attr a : Vlan = Tag( 1 );", "52:19: a value of type 'N::Vlan' was expected" },
  Case{ "attr a : Vlan = Vlan( 1, 2 );", "52:19: 'Vlan' takes one value" },
  Case{ "attr a : Vlan = Vlan( 4095 );", "52:25: '4095' is outside the range of 'Vlan'" },
  Case{ "attr a : Label = Label( \"long\" );", "52:27: the text is longer than 'Label' admits" },
  Case{ "attr a : Pair = Pair( Vlan( 1 ) );", "52:19: 'Pair' takes 2 values, not 1" },
  Case{ "attr a : Pair = Pair( Vlan( 1 ), Tag( 2 ) );", "" },
  Case{ "attr a : Loose = Loose( Vlan( 1 ) );", "" },
  Case{ "attr a : Loose = Loose( Vlan( 1 ), maybe );",
        "52:38: an enumerator of 'N::Mode' was expected" },
  Case{ "attr a : ref Named = x;", "52:24: a pointer to an entity has no default but null" },
  Case{ "attr a : u16 = c; /// d\n  const c : u16 = 1;",
        "52:18: the constant 'c' must stand before its use" },
  Case{ "const c : u8 = 1; /// d\n  attr a : u16 = c;", "53:18: a value of type 'u16' was expected" },
  Case{ "const c : u16 = 1; /// d\n  attr a : Vlan = Vlan( c );", "" },
  Case{ "attr a : Far = Far( 1, \"x\" );", "" },
  Case{ "attr a : Far = Far( off );", "52:23: a number or a text was expected" },
  Case{ "const c : ref Named = 1;", "52:17: a constant is a value, not a pointer" },
  Case{ "const c : u8;", "52:9: the constant 'c' has no value" } ) );

INSTANTIATE_TEST_SUITE_P( InAttributes, Members, testing::Values(
  Case{ "attr a : Named;", "52:12: an entity is held by 'ref' or 'weak'" },
  Case{ "attr a : own Named;", "52:16: an owned entity is declared by 'child'" },
  Case{ "attr a : weak Vlan;", "52:17: 'Vlan' is a value: only entities are pointed to" },
  Case{ "attr a : u8, not null;", "52:8: 'not null' is for pointers" },
  Case{ "attr a : u8, stored before the check;", "52:8: 'stored before the check' needs a 'max'" },
  Case{ "attr a : u8, virtual;", "" },
  Case{ "hidden a : ref Named;", "" },
  Case{ "hidden a : Named;", "52:14: an entity is held by 'ref' or 'weak'" },
  Case{ "attr a : u8, then handleA;", "52:8: 'then' is for values of a reactor" },
  Case{ "attr a : u8 max most;", "52:19: there is no constant 'most'" },
  Case{ "const most : u16 = 1; /// d\n  attr a : u8 max most;", "53:19: 'most' is not of type 'u8'" },
  Case{ "attr a : bool max most;", "52:21: 'max' with a constant is for whole numbers" },
  Case{ "attr a : u8 max 5 bytes;", "52:19: 'bytes' are counted of a Koi::String8" },
  Case{ "attr a : Koi::String8 max 99999999999 bytes;", "52:29: '99999999999' is not a length" },
  Case{ "param a : Named;", "52:13: an entity is held by 'ref' or 'weak'" },
  Case{ "param a : own Named;", "52:17: a parameter is a value, a 'ref' or a 'weak'" },
  Case{ "param a : ref Named;",
        "51:8: 'E' takes its name from its first parameter, which must be a value" },
  Case{ "param name : u8;", "52:9: 'name' is a name of every entity" },
  Case{ "param name : Koi::Name;", "" },
  Case{ "param a : u8; /// d\n  param b : u8 settable;", "" },
  Case{ "param a : u8 settable;",
        "52:9: only a value, which its entity is not called after, is 'settable'" },
  Case{ "derived a : u8;", "" },
  Case{ "derived a : u8 = b.c;", "52:20: there is no attribute 'b'" },
  Case{ "attr p : Pair; /// d\n  derived a : u8 = p.c;", "53:20: 'p' has no field 'c'" },
  Case{ "attr p : Pair; /// d\n  derived a : Tag = p.a;", "53:21: 'p.a' is of type 'N::Vlan'" },
  Case{ "attr p : ref Named; /// d\n  derived a : Tag = p.used;", "53:21: 'p' has no field 'used'" },
  Case{ "derived a : ref Named;", "52:19: a derived attribute is a value, not a pointer" },
  Case{ "child a : u8;", "52:13: 'u8' is a value: only entities are pointed to" },
  Case{ "reactor a : Named;", "52:15: 'Named' is no reactor" },
  Case{ "reactor a : Sm; /// d\n  attr aDel : u8;", "53:8: 'aDel' and 'a' would both generate 'aDel'" },
  Case{ "function isEqual( E const & other ) : bool;", "" },
  Case{ "override function f() : bool;",
        "52:21: 'f' overrides no virtual function of a base" } ) );

INSTANTIATE_TEST_SUITE_P( InCollections, Members, testing::Values(
  Case{ "hash a[ Bare ] : bool;", "52:11: the key type 'Bare' has no hash" },
  Case{ "hash a[ Raw ] : bool;", "52:11: the key type 'Raw' has no hash" },
  Case{ "tree a[ Loose ] : bool;", "52:11: the key type 'Loose' is not ordered" },
  Case{ "tree a[ Mode ] : bool;", "" },
  Case{ "hash a[ Named ] : bool;", "52:11: a key is a value, not an entity" },
  Case{ "hash a[ Vlan ] : Named;", "52:20: a collection of entities says 'own', 'ref' or 'weak'" },
  Case{ "hash a[ Vlan ] : own Keyed;", "" },
  Case{ "hash a[ Tag ] : own Keyed;",
        "52:23: the constructor parameters of 'Keyed' do not begin with the key 'Tag'" },
  Case{ "hash a[ Koi::Name ] : own Named;", "" },
  Case{ "hash a[ Vlan ] : own Named;",
        "52:24: the constructor parameters of 'Named' do not begin with the key 'Vlan'" },
  Case{ "hash a[ Vlan ] : Pair by a;", "" },
  Case{ "hash a[ Tag ] : Pair by a;", "52:27: the field 'a' is not of the key's type 'Tag'" },
  Case{ "hash a[ Vlan ] : Pair by c;", "52:28: 'Pair' has no field 'c'" },
  Case{ "hash a[ Vlan ] : bool by c;", "52:28: 'by' is for collections of structures" },
  Case{ "hash a[ Vlan ] : bool, not null;", "52:8: 'not null' is for pointers" },
  Case{ "hash a[ Vlan ] : bool, stored before the check;",
        "52:8: 'stored before the check' is for attributes" },
  Case{ "hash a[ Vlan ] : bool, then handleA;", "52:8: 'then' is for values of a reactor" },
  Case{ "hash a[ Vlan ] : bool, virtual;", "52:8: 'virtual' is for attributes and functions" },
  Case{ "hash a[ Vlan ] : own Koi::Entity;",
        "52:11: the key of entities of any type is a Koi::Name" },
  Case{ "hash a[ Koi::Name ] : own Koi::Entity;", "" },
  Case{ "hash a[ Vlan ] : weak Named, not null;", "" },
  Case{ "queue a[ u64 ] : bool;", "52:12: the index of a queue is a u8, u16 or u32" },
  Case{ "queue a[ u8 ] : own Keyed;", "52:23: a queue holds values" } ) );

#define TABLE "/// d\ntable value Row {\n  vlan : Vlan; /// d\n}\n/// d\nentity E {\n  "
#define END " /// d\n}"
INSTANTIATE_TEST_SUITE_P( InEntitiesAndReactors, Errors, testing::Values(
  Case{ "/// d\nvalue A, order by hand {\n  a : u8; /// d\n}",
        "51:7: 'A' has its order by hand, but is not 'ordered'" },
  Case{ "/// d\nentity A : Vlan {\n}", "51:12: 'Vlan' is no entity to extend" },
  Case{ "/// d\nentity A : A {\n}", "51:12: 'A' contains itself" },
  Case{ "/// d\nentity A : B {\n}\n/// d\nentity B : A {\n}",
        "51:12: 'B' is declared below: it must stand before its use" },
  Case{ "/// d\nentity A : Named {\n  attr used : u8; /// d\n}",
        "52:8: 'used' is already a member of the base 'Named'" },
  Case{ "/// d\nentity A : Named {\n  override function kind() : u8; /// d\n}", "" },
  Case{ "/// d\nforeign entity A( Vlan ) \"a.h\";", "51:19: a parameter of a foreign entity has a name" },
  Case{ TABLE "table t[ Vlan ] : Row;" END, "" },
  Case{ TABLE "table t[ Tag ] : Row;" END, "56:12: the key of 'Row' is of type 'N::Vlan'" },
  Case{ TABLE "table t[ Vlan ] : Pair;" END, "56:21: 'Pair' is no value of a table" },
  Case{ TABLE "table t[ Vlan ] : u8;" END, "56:21: 'u8' is no value of a table" },
  Case{ TABLE "table t[ Vlan ] : ref Named;" END, "56:25: a table holds values" },
  Case{ TABLE "table t[ Vlan ] : Row; /// d\n  attr tControl : u8;" END,
        "57:8: 'tControl' and 't' would both generate 'tControl'" },
  Case{ TABLE "table t[ Vlan ] : Row; /// d\n}\n/// d\nreactor R {\n  start a;\n"
        "  watch e : E { /// d\n    onT( Vlan );\n    onT;\n  }\n}", "" },
  Case{ TABLE "table t[ Vlan ] : Row; /// d\n}\n/// d\nreactor R {\n  start a;\n"
        "  watch e : E { /// d\n    onT( Tag );\n  }\n}",
        "62:10: the key of 't' is of type 'N::Vlan'" },
  Case{ "/// d\nreactor R {\n  start a;\n  watch each w[ Vlan ] : Named, not null { /// d\n  }\n}", "" },
  Case{ "/// d\nreactor R {\n}", "" },
  Case{ "/// d\nreactor R {\n  watch e : Named { /// d\n  }\n}", "51:9: 'R' has no start handler" },
  Case{ "/// d\nreactor R {\n  start a;\n  start b;\n}", "53:9: 'R' has a start handler already" },
  Case{ "/// d\nreactor R {\n  start a;\n  cleanup b;\n  cleanup c;\n}",
        "54:11: 'R' has a cleanup handler already" },
  Case{ "/// d\nreactor R {\n  start a;\n  hash h[ Vlan ] : own Sm; /// d\n}",
        "53:24: the constructor parameters of 'Sm' do not begin with the key 'Vlan'" },
  Case{ "/// d\nreactor R {\n  start a;\n  param o : weak R; /// d\n  hash h[ Vlan ] : own S; /// d\n}"
        "\n/// d\nreactor S {\n  start a;\n}",
        "54:24: 'S' is declared below: it must stand before its use" },
  Case{ "/// d\nreactor R {\n  start a;\n  watch w : Vlan { /// d\n  }\n}",
        "53:13: 'Vlan' is no entity to watch" },
  Case{ "/// d\nreactor R {\n  start a;\n  watch w : ref Named { /// d\n  }\n}",
        "53:17: a watched entity is held anyway: leave out how" },
  Case{ "/// d\nreactor R {\n  start a;\n  watch each w : Named { /// d\n  }\n}",
        "53:14: 'watch each' needs a key" },
  Case{ "/// d\nreactor R {\n  start a;\n  watch w[ Vlan ] : Named { /// d\n  }\n}",
        "53:12: 'watch' has no key: write 'watch each'" },
  Case{ "/// d\nreactor R {\n  start a;\n  watch each w[ Bare ] : Named { /// d\n  }\n}",
        "53:17: the key type 'Bare' is neither hashed nor ordered" } ) );
// clang-format on

// Each case is a callback of a watched entity; it begins in column 5 of line 54.
class Callbacks : public testing::TestWithParam< Case > {};

TEST_P( Callbacks, areToldWhereTheyStand ) {
  std::string const error = GetParam().error;
  EXPECT_EQ(
      errorsOf( before() + "/// d\nreactor R {\n  start a;\n  watch w : Named { /// d\n    " +
                GetParam().model +
                "\n  }\n  watch f : Base { /// d\n    onAny( Vlan );\n  }\n}\n}\n" ),
      error.empty() ? "" : "M.koi:" + error );
}

// clang-format off
INSTANTIATE_TEST_SUITE_P( OfWatchedEntities, Callbacks, testing::Values(
  Case{ "onUsed; onBy( Vlan );", "" },
  Case{ "onUsed;\n  }\n  watch k : Keyed { /// d\n    onPair;", "" },
  Case{ "onUsed;\n  }\n  watch k : Keyed { /// d\n    onVlan;",
        "57:5: 'vlan' of 'Keyed' never changes" },
  Case{ "onBy;", "54:5: 'by' is told of by key: write 'onBy( N::Vlan )'" },
  Case{ "used;", "54:5: a callback is named after an attribute: 'onAttribute'" },
  Case{ "onOther;", "54:5: 'onOther' names no attribute of 'Named'" },
  Case{ "onMost;", "54:5: 'most' of 'Named' never changes" },
  Case{ "onUsed( Vlan );", "54:13: 'used' is no collection and has no key" },
  Case{ "onBy( Tag );", "54:11: the key of 'by' is of type 'N::Vlan'" },
  Case{ "onBy( Nothing );", "54:11: there is no type 'Nothing'" } ) );
// clang-format on

// A syntax error for every rule that must match.
class Syntax : public testing::TestWithParam< Case > {};

TEST_P( Syntax, isToldWhereItStands ) {
  std::string const error = GetParam().error;
  EXPECT_EQ( errorsOf( GetParam().model ), "M.koi:" + error );
}

// clang-format off
#define IN( text ) "module M;\nnamespace N {\n" text "\n}\n"
INSTANTIATE_TEST_SUITE_P( OfFiles, Syntax, testing::Values(
  Case{ "", "1:1: 'module NAME;' was expected" },
  Case{ "\xff", "1:1: 'module NAME;' was expected" },
  Case{ "module 5;", "1:8: a module name was expected" },
  Case{ "module M", "1:9: ';' was expected" },
  Case{ "module M;\nuses 5;", "2:6: the name of a module was expected" },
  Case{ "module M;\nuses A", "2:7: ';' was expected" },
  Case{ "module M;\nvalue", "2:1: 'namespace' or the end of the file was expected" },
  Case{ "module M;\nnamespace ;", "2:11: a namespace name was expected" },
  Case{ "module M;\nnamespace N::", "2:12: '{' was expected" },
  Case{ IN( "valu A;" ), "3:1: a declaration or '}' was expected" },
  Case{ IN( "foreign enum A;" ), "3:9: 'value' or 'entity' was expected" },
  Case{ IN( "foreign value A \"a.h\"" ), "4:1: ';' was expected" } ) );

INSTANTIATE_TEST_SUITE_P( OfValues, Syntax, testing::Values(
  Case{ IN( "value 5;" ), "3:7: the name of the declared was expected" },
  Case{ IN( "value A;" ), "3:8: ':', '{' or a header was expected" },
  Case{ IN( "value A : 5;" ), "3:11: a primitive type was expected" },
  Case{ IN( "value A : u8 named 5;" ), "3:20: the name of the field was expected" },
  Case{ IN( "value A : u8 in ..;" ), "3:17: a number or a constant was expected" },
  Case{ IN( "value A : u8 in 1-2;" ), "3:18: '..' was expected" },
  Case{ IN( "value A : u8 in 1..;" ), "3:20: a number or a constant was expected" },
  Case{ IN( "value A : u8 max ;" ), "3:18: a number or a constant was expected" },
  Case{ IN( "value A : u8, text" ), "3:15: 'text by hand' was expected" },
  Case{ IN( "value A, order {" ), "3:10: 'text by hand' or 'order by hand' was expected" },
  Case{ IN( "value A : u8 positiv" ), "3:14: ';' or '{' was expected" },
  Case{ IN( "value A : u8 {\n  a : u8;\n}" ), "4:3: a member or '}' was expected" },
  Case{ IN( "value A {\n  /// d\n  a : u8;\n}" ),
        "4:3: documentation stands behind the ';' of its member" },
  Case{ IN( "value A {\n  5 : u8;\n}" ), "4:3: a member or '}' was expected" },
  Case{ IN( "value A {\n  a u8;\n}" ), "4:5: ':' was expected" },
  Case{ IN( "value A {\n  a : 5;\n}" ), "4:7: a type name was expected" },
  Case{ IN( "value A {\n  a : u8\n}" ), "5:1: ';' was expected" },
  Case{ IN( "value A {\n  constructor;\n}" ), "4:14: '(' was expected" },
  Case{ IN( "value A {\n  constructor( u8 a;\n}" ), "4:20: a parameter or ')' was expected" },
  Case{ IN( "value A {\n  static const a : u8 = 1;\n}" ),
        "4:10: 'function' or 'operation' was expected" },
  Case{ IN( "value A {\n  function 5();\n}" ), "4:12: a name was expected" },
  Case{ IN( "table value A hashed in b {" ), "3:25: a header was expected" },
  Case{ IN( "foreign value A \"a.h\" of x bytes;" ), "3:26: a number of bytes was expected" },
  Case{ IN( "foreign value A \"a.h\" of 6;" ), "3:27: 'bytes' was expected" },
  Case{ IN( "enum A { }" ), "3:10: an enumerator was expected" },
  Case{ IN( "enum A { a b }" ), "3:12: ',' or '}' was expected" },
  Case{ IN( "enum A { a = x }" ), "3:14: a number was expected" },
  Case{ IN( "enum A { a, 5 }" ), "3:13: an enumerator or '}' was expected" },
  Case{ IN( "function f( A );\nfunction f : A" ), "4:12: '(' was expected" },
  Case{ IN( "function f() : A" ), "4:1: ';' was expected" } ) );

INSTANTIATE_TEST_SUITE_P( OfEntities, Syntax, testing::Values(
  Case{ IN( "entity A;" ), "3:9: ':', '{', '(' or a header was expected" },
  Case{ IN( "entity A( u8 a );" ), "3:17: a header was expected" },
  Case{ IN( "entity A : 5 {}" ), "3:12: the name of a base was expected" },
  Case{ IN( "entity A {\n  attr a : u8 = ;\n}" ), "4:17: a value was expected" },
  Case{ IN( "entity A {\n  attr a : u8 = A( 1;\n}" ), "4:21: a value or ')' was expected" },
  Case{ IN( "entity A {\n  attr a : u8 = \"x\n}" ),
        "4:19: '\"' was expected: a text is one line without '\\'" },
  Case{ IN( "entity A {\n  attr a : u8 max ;\n}" ),
        "4:19: the name of a constant or a number of bytes was expected" },
  Case{ IN( "entity A {\n  attr a : u8 max 5;\n}" ), "4:20: 'bytes' was expected" },
  Case{ IN( "entity A {\n  attr a : u8, null;\n}" ),
        "4:16: 'stored before the check', 'not null', 'virtual' or 'then' was expected" },
  Case{ IN( "reactor A {\n  attr a : u8, then ;\n}" ), "4:21: the name of a handler was expected" },
  Case{ "module A in 5;", "1:13: the folder of its header was expected" },
  Case{ IN( "entity A {\n  derived a : u8 = 5;\n}" ), "4:20: the name of an attribute was expected" },
  Case{ IN( "entity A {\n  derived a : u8 = b;\n}" ), "4:21: '.' was expected" },
  Case{ IN( "entity A {\n  derived a : u8 = b.5;\n}" ), "4:22: the name of a field was expected" },
  Case{ IN( "entity A {\n  hash a : u8;\n}" ), "4:10: '[' was expected" },
  Case{ IN( "entity A {\n  hash a[ 5 ] : u8;\n}" ), "4:11: a type name was expected" },
  Case{ IN( "entity A {\n  hash a[ B : u8;\n}" ), "4:13: ']' was expected" },
  Case{ IN( "entity A {\n  hash a[ B ] : u8 by ;\n}" ), "4:23: the name of a field was expected" },
  Case{ IN( "reactor A {\n  watch a : B;\n}" ), "4:14: '{' was expected" },
  Case{ IN( "reactor A {\n  watch a : B {\n  5 }\n}" ), "5:3: a callback or '}' was expected" },
  Case{ IN( "reactor A {\n  watch each a[ C ] : B, null {\n" ), "4:26: 'not null' was expected" },
  Case{ IN( "reactor A {\n  watch a : B {\n  onC( 5 ); }\n}" ), "5:8: a type name was expected" },
  Case{ IN( "reactor A {\n  watch a : B {\n  onC }\n}" ), "5:7: ';' was expected" } ) );
// clang-format on

/// What is said about several modules of one call: name -> text.
std::string errorsOf( std::map< std::string, std::string > const & modules ) {
  try {
    Model model;
    for( auto const & [name, text] : modules )
      model.modules.push_back( parsedModule( "module " + name + ";\n" + text, name + ".koi" ) );
    check( model );
  } catch( ModelError const & e ) {
    return e.what();
  }
  return {};
}

TEST( Modules, mustFitTogether ) {
  std::string const v = "namespace N {\n/// d\nvalue V : u8;\n/// d\nentity E {\n}\n}";
  EXPECT_EQ( errorsOf( "module A;", "B.koi" ),
             "B.koi:1:8: module 'A' must stand in a file of that name" );
  EXPECT_EQ( errorsOf( { { "A", "uses B;" } } ), "A.koi:2:6: there is no module 'B'" );
  EXPECT_EQ( errorsOf( { { "A", "uses A;" } } ), "A.koi:2:6: a module does not use itself" );
  EXPECT_EQ( errorsOf( { { "A", "uses B;" }, { "B", v } } ),
             "A.koi:2:6: nothing of module 'B' is needed" );
  EXPECT_EQ( errorsOf( { { "A", "uses B;\nuses B;" }, { "B", v } } ),
             "A.koi:3:6: 'uses B;' is said twice" );
  EXPECT_EQ( errorsOf( { { "A", "uses B;" }, { "B", "uses C;" }, { "C", "uses A;" } } ),
             "C.koi:2:6: 'uses A;' closes a circle: A, B, C, A" );
  EXPECT_EQ(
      errorsOf( { { "A", "namespace N {\n/// d\nvalue W {\n  v : V; /// d\n}\n}" }, { "B", v } } ),
      "A.koi:5:7: 'N::V' is of module 'B': write 'uses B;'" );
  EXPECT_EQ( errorsOf( { { "A", "namespace N::V {\n/// d\nvalue W : u8;\n}" }, { "B", v } } ),
             "A.koi:4:7: namespace 'N::V' is also a type" );
  EXPECT_EQ( errorsOf( { { "A", "namespace N {\n/// d\nentity F {\n  attr e : ref E; /// d\n}\n}" },
                         { "B", v } } ),
             "" );
}

TEST( Modules, haveNamesOfTheirOwn ) {
  Model model;
  model.modules.push_back( parsedModule( "module A;", "x/A.koi" ) );
  model.modules.push_back( parsedModule( "module A;", "y/A.koi" ) );
  EXPECT_THROW(
      try { check( model ); } catch( ModelError const & e ) {
        EXPECT_STREQ( e.what(), "y/A.koi:1:8: module 'A' is already 'x/A.koi'" );
        throw;
      },
      ModelError );
}

TEST( Modules, allErrorsAreToldInOrder ) {
  EXPECT_EQ( errorsOf( { { "A", "namespace N {\nvalue a : X;\nvalue B : Y;\n}" },
                         { "B", "namespace Koi {\n/// d\nvalue C : Z;\n}" } } ),
             "A.koi:3:7: 'a' must begin with a capital, for it is a type\n"
             "A.koi:3:7: 'a' has no documentation\n"
             "A.koi:3:11: there is no type 'X'\n"
             "A.koi:4:7: 'B' has no documentation\n"
             "A.koi:4:11: there is no type 'Y'\n"
             "B.koi:4:7: 'Koi' begins with koi, which is the generator's own\n"
             "B.koi:4:11: there is no type 'Z'" );
}

}  // namespace
