// VlanMuxDemuxTest.cpp: frames of VLANs to and from one device, in memory.

#include <reactors/VlanMuxDemux.h>

#include <cstdlib>

#include <gtest/gtest.h>
#include <koi/KoiType.h>
#include <support/Packets.h>
#include <support/Refusal.h>
#include <wirex/MemoryPam.h>

namespace {

using Bridging::VlanIdOrNone;
using Lumo::VlanMuxDemux;
using TestSupport::bytesOf;
using TestSupport::pktOf;
using TestSupport::Receiver;
using Wirex::Pam;
using Wirex::Pkt;
using Wirex::VlanTag;

std::string const addresses( "\x00\x00\x5e\x00\x53\x01\x00\x00\x5e\x00\x53\x02", 12 );
std::string const ip( "\x08\x00", 2 );

std::string number( unsigned n ) {
  return { static_cast< char >( n >> 8 ), static_cast< char >( n ) };
}
std::string tag( unsigned tpid, unsigned tci ) { return number( tpid ) + number( tci ); }
std::string payload( std::size_t size ) {
  std::string bytes;
  for( std::size_t i = 0; i < size; ++i )
    bytes += static_cast< char >( i * 7 + 1 );
  return bytes;
}
/// A frame whose EtherType and payload are behind those tags.
std::string frame( std::string const & tags = {}, std::size_t size = 46 ) {
  return addresses + tags + ip + payload( size );
}

constexpr Koi::U16 defaultVlan = 7;

Koi::Ptr< VlanMuxDemux > muxOn( Koi::Ptr< Pam > const & pam, bool leaveVlanHdr = false ) {
  return Lumo::vlanMuxDemuxFactory( pam, "", VlanIdOrNone( defaultVlan ), leaveVlanHdr );
}

struct Case {
  char const * name;
  std::string in;
  Koi::U32 vlan;
  std::string out;
};

void PrintTo( Case const & c, std::ostream * out ) { *out << c.name; }

class Decapsulate : public testing::TestWithParam< Case > {};

TEST_P( Decapsulate, findsTheVlanAndTakesItsTagAway ) {
  auto const & [name, in, vlan, out] = GetParam();
  for( bool const isShared : { false, true } ) {
    auto const pkt = pktOf( in );
    auto const other = isShared ? pkt->clone() : nullptr;
    EXPECT_EQ( muxOn( nullptr )->decapsulate( pkt ), vlan );
    EXPECT_EQ( bytesOf( *pkt ), out );
    if( other ) {
      EXPECT_EQ( bytesOf( *other ), in );
    }
  }
  auto const pkt = pktOf( in );
  Koi::U8 const * const start = pkt->data();
  EXPECT_EQ( muxOn( nullptr, true )->decapsulate( pkt ), vlan ) << "tags are left";
  EXPECT_EQ( bytesOf( *pkt ), in );
  EXPECT_EQ( pkt->data(), start );
}

std::string const nine = tag( 0x8100, 9 );

INSTANTIATE_TEST_SUITE_P(
    Frames, Decapsulate,
    testing::Values(
        Case{ "untagged", frame(), defaultVlan, frame() },
        Case{ "tagged", frame( tag( 0x8100, 9 ) ), 9, frame() },
        Case{ "withPriorityAndDropBit", frame( tag( 0x8100, 0xf009 ) ), 9, frame() },
        Case{ "priorityOnly", frame( tag( 0x8100, 0xe000 ) ), 0, frame() },
        Case{ "vlan4095", frame( tag( 0x8100, 0x0fff ) ), 4095, frame() },
        Case{ "serviceTag", frame( tag( 0x88a8, 9 ) ), defaultVlan, frame( tag( 0x88a8, 9 ) ) },
        Case{ "twoTags", frame( nine + tag( 0x8100, 10 ) ), 9, frame( tag( 0x8100, 10 ) ) },
        Case{ "serviceTagInside", frame( nine + tag( 0x88a8, 1 ) ), 9, frame( tag( 0x88a8, 1 ) ) },
        Case{ "serviceTagOutside", frame( tag( 0x88a8, 1 ) + nine ), defaultVlan,
              frame( tag( 0x88a8, 1 ) + nine ) },
        Case{ "jumbo", frame( nine, 9000 ), 9, frame( {}, 9000 ) } ),
    []( auto const & given ) { return given.param.name; } );

TEST( VlanMuxDemux, leavesFramesThatAreCutAsTheyAre ) {
  std::string const whole = frame( tag( 0x8100, 9 ) );
  auto const mux = muxOn( nullptr );
  for( std::size_t size = 0; size <= 20; ++size ) {
    // In a buffer that ends with the frame: reading further is seen by who watches memory.
    auto const pkt = pktOf( whole.substr( 0, size ), 0 );
    EXPECT_EQ( mux->decapsulate( pkt ), size < 18 ? defaultVlan : 9u ) << size;
    EXPECT_EQ( bytesOf( *pkt ),
               size < 18 ? whole.substr( 0, size ) : addresses + whole.substr( 16, size - 16 ) );
    auto const beside = pktOf( frame().substr( 0, size ), 0 );
    beside->separateVlanTagIs( { 0x8100, 9 } );
    EXPECT_EQ( mux->decapsulate( beside ), size < 14 ? defaultVlan : 9u ) << size;
    EXPECT_EQ( beside->hasSeparateVlanTag(), size < 14 );
    auto const out = pktOf( whole.substr( 0, size ), 0 );
    mux->doEncapsulate( out, 5 );
    EXPECT_EQ( out->dataBytes(), size < 14 ? size : size + 4 );
  }
}

TEST( VlanMuxDemux, takesASeparateHeaderForTheOutermostTag ) {
  struct Separate {
    VlanTag tag;
    Koi::U32 vlan;
    bool isTaken;
  };
  for( auto const & [tag, vlan, isTaken] :
       { Separate{ { 0x8100, 0xf009 }, 9, true }, Separate{ { 0x8100, 0xe000 }, 0, true },
         Separate{ { 0x8100, 0xffff }, 4095, true }, Separate{ { 0x88a8, 9 }, defaultVlan, false },
         Separate{ { 0x9100, 9 }, defaultVlan, false } } )
    for( bool const leaveVlanHdr : { false, true } ) {
      auto const pkt = pktOf( frame( nine ) );
      auto const other = pkt->clone();
      pkt->separateVlanTagIs( tag );
      EXPECT_EQ( muxOn( nullptr, leaveVlanHdr )->decapsulate( pkt ), vlan );
      EXPECT_EQ( pkt->hasSeparateVlanTag(), !isTaken || leaveVlanHdr );
      EXPECT_EQ( bytesOf( *pkt ), frame( nine ) );
      EXPECT_EQ( pkt->data(), other->data() ) << "nothing is edited";
    }
}

TEST( VlanMuxDemux, putsTheTagOutermost ) {
  auto const mux = muxOn( nullptr );
  for( std::size_t const headRoom : { 0u, 3u, 4u, 64u } )
    for( auto const & [vlan, tci] :
         std::initializer_list< std::pair< Koi::U32, unsigned > >{ { 1, 1 },
                                                                   { 0, 0 },
                                                                   { 4095, 0x0fff },
                                                                   { 4096, 0 },
                                                                   { 0xffff, 0x0fff },
                                                                   { 0x10009, 9 } } )
      for( auto const & tags : { std::string(), nine, tag( 0x88a8, 0xe003 ) } )
        for( std::size_t const size : { 0u, 46u, 9000u } ) {
          auto const pkt = pktOf( frame( tags, size ), headRoom );
          auto const other = headRoom == 64 ? pkt->clone() : nullptr;
          Koi::U8 const * const start = pkt->data();
          mux->doEncapsulate( pkt, vlan );
          EXPECT_EQ( bytesOf( *pkt ), frame( tag( 0x8100, tci ) + tags, size ) );
          EXPECT_EQ( pkt->data() == start - 4, headRoom == 4 ) << "in place when it may";
          if( other ) {
            EXPECT_EQ( bytesOf( *other ), frame( tags, size ) );
          }
        }
  auto const pkt = pktOf( frame() );
  muxOn( nullptr, true )->doEncapsulate( pkt, 9 );
  EXPECT_EQ( bytesOf( *pkt ), frame() );
}

TEST( VlanMuxDemux, putsASeparateHeaderBehindItsOwnTag ) {
  auto const pkt = pktOf( frame() );
  pkt->separateVlanTagIs( { 0x88a8, 0x2003 } );
  muxOn( nullptr )->doEncapsulate( pkt, 9 );
  EXPECT_FALSE( pkt->hasSeparateVlanTag() );
  EXPECT_EQ( bytesOf( *pkt ), frame( nine + tag( 0x88a8, 0x2003 ) ) );
}

struct OnWire : testing::Test {
  OnWire() { std::tie( near, far ) = Wirex::memoryPamFactory( activity ); }
  void comes( std::string const & bytes ) {
    far->send( pktOf( bytes ) );
    activity->runFor( 0 );
  }
  Koi::Ptr< Koi::Activity > activity = Koi::activityFactory();
  Koi::Ptr< Pam > near, far;
};

TEST_F( OnWire, carriesTheVlansOfOneDevice ) {
  auto const mux = muxOn( near );
  EXPECT_TRUE( mux->initialized() );
  EXPECT_EQ( int( mux->mode() ), 3 );
  EXPECT_EQ( mux->ethPam(), nullptr );
  Receiver device( far ), untagged( mux->manyPamIs( defaultVlan ) ), nine_( mux->manyPamIs( 9 ) );
  comes( frame() );
  comes( frame( nine ) );
  comes( frame( tag( 0x8100, 10 ) ) );
  EXPECT_EQ( untagged.frames(), std::vector{ frame() } );
  EXPECT_EQ( nine_.frames(), std::vector{ frame() } );
  EXPECT_EQ( mux->counters().unknownPkts, 1u );

  // An answer goes out of the buffer that it came in.
  Koi::U8 const * const start = nine_.pkts[0]->data();
  EXPECT_TRUE( mux->manyPam( 9 )->send( nine_.pkts[0] ) );
  activity->runFor( 0 );
  EXPECT_EQ( device.frames(), std::vector{ frame( nine ) } );
  EXPECT_EQ( device.pkts[0]->data(), start - 4 );
}

TEST_F( OnWire, leavesTagsWhenItIsTold ) {
  auto const mux = muxOn( near, true );
  Receiver device( far ), receiver( mux->manyPamIs( 9 ) );
  comes( frame( tag( 0x8100, 0xf009 ) ) );
  ASSERT_EQ( receiver.frames(), std::vector{ frame( tag( 0x8100, 0xf009 ) ) } );
  mux->manyPam( 9 )->send( receiver.pkts[0] );
  activity->runFor( 0 );
  EXPECT_EQ( device.frames(), receiver.frames() );
}

TEST_F( OnWire, isAReactor ) {
  auto const mux = Lumo::VlanMuxDemuxIs( near, "", VlanIdOrNone(), false );
  EXPECT_EQ( mux->fwkType(), Koi::typeNode( "Lumo::VlanMuxDemux" ) );
  EXPECT_EQ( mux->fwkType()->kind, Koi::KoiType::reactor );
  EXPECT_TRUE( mux->hasNotificationActive() );
  auto const kept = mux->manyPamIs( 9 );
  mux->koiDoZombieReactors( true );
  EXPECT_EQ( mux->onePam(), nullptr );
  EXPECT_FALSE( kept->send( pktOf( frame() ) ) );
}

TEST_F( OnWire, refusesADeviceThatIsNotThere ) {
  EXPECT_EQ( refusal< Wirex::DeviceException >( [&] {
               Lumo::vlanMuxDemuxFactory( near, "no-such-device", VlanIdOrNone(), false );
             } ).substr( 0, 37 ),
             "cannot open device 'no-such-device': " );
  Receiver stillFree( near );
}

TEST( VlanMuxDemuxDeath, tracesTheVlansAtLevel8 ) {
  // Begun anew, for the level is read when the first line is traced.
  GTEST_FLAG_SET( death_test_style, "threadsafe" );
  auto const traces = [] {
    auto const mux = muxOn( nullptr );
    auto const beside = pktOf( frame() );
    beside->separateVlanTagIs( { 0x8100, 0xe02a } );
    mux->decapsulate( beside );
    mux->decapsulate( pktOf( frame( nine ) ) );
    mux->doEncapsulate( beside, 4097 );
    std::_Exit( 0 );
  };
  setenv( "LUMO_TRACE", "8", 1 );
  EXPECT_EXIT( traces(), testing::ExitedWithCode( 0 ),
               "VlanMuxDemux::decapsulate\\(\\) separateDot1QHdr vlanId: 42\n"
               "(.*\n)*.*VlanMuxDemux::decapsulate\\(\\) vlanId: 9\n"
               "(.*\n)*.*VlanMuxDemux::doEncapsulate\\(\\) vlanId: 4097" );
  setenv( "LUMO_TRACE", "7", 1 );
  EXPECT_EXIT( traces(), testing::ExitedWithCode( 0 ), "^$" );
  unsetenv( "LUMO_TRACE" );
}

}  // namespace
