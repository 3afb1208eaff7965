// SlotLayoutTest.cpp: where fields lie in a slot, which every process of a machine has to agree on.
#include <gtest/gtest.h>
#include <koigen/Checker.h>
#include <koigen/SlotLayout.h>

namespace {

using namespace Koigen;

struct Case {
  char const * fields;  // their types, one a line
  char const * layout;  // the offset of each piece, then the sizes of key and value
};

class Slots : public testing::TestWithParam< Case > {};

TEST_P( Slots, haveTheirFieldsBehindOneAnother ) {
  std::string text = R"(module M;
namespace N {
/// d
value Vlan : u16 in 1..4094;
/// d
foreign value Mac "n/Mac.h" of 6 bytes;
/// d
foreign value Intf "n/Intf.h" of 8 bytes;
/// d
foreign value Odd "n/Odd.h" of 5 bytes;
/// d
enum Mode { off, on }
/// d
value Key { vlan : Vlan; /// d
  mac : Mac; /// d
}
/// d
value Deep { flag : u8; /// d
  key : Key; /// d
}
/// d
table value V {
)";
  std::istringstream types( GetParam().fields );
  int count = 0;
  for( std::string type; types >> type; )
    text += "f" + std::to_string( count++ ) + " : " + type + "; /// d\n";
  auto const model = parsedText( text + "}\n}\n", "M.koi" );
  auto const layout = slotLayoutOf( *model.types.at( "N::V" ) );
  std::string found;
  for( auto const & piece : layout.pieces )
    found += std::to_string( piece.offset ) + " ";
  EXPECT_EQ(
      found + "| " + std::to_string( layout.keySize ) + " " + std::to_string( layout.valueSize ),
      GetParam().layout );
}

INSTANTIATE_TEST_SUITE_P(
    OfEachKind, Slots,
    testing::Values( Case{ "Key Intf u32 Koi::Seconds Mode", "0 2 8 16 20 28 | 8 32" },
                     Case{ "Vlan u64 u64 u64 u64 u64 u64 u64 u64 u64",
                           "0 4 12 20 28 36 44 52 60 68 | 4 76" },
                     Case{ "u8", "0 | 4 4" }, Case{ "u8 u8 bool u16 u8", "0 4 5 6 8 | 4 12" },
                     Case{ "Mac Odd u16 i32", "0 8 14 16 | 8 20" },
                     Case{ "Deep Deep", "0 2 4 12 14 16 | 12 24" } ) );

}  // namespace
