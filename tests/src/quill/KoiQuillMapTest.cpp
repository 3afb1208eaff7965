// KoiQuillMapTest.cpp: a table as a collection of an entity: what its mutators do, whom they tell,
// what reflection sees, and whose the table is when nobody said.
#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

#include <Lumo/QuillBridging.h>
#include <mem/Rova.h>
#include <quill/EntityManager.h>
#include <quill/PrivateTable.h>

#include "support/Refusal.h"
#include "support/TableFixture.h"

using namespace Tests;
using Bridging::Fid;
using Bridging::HostKey;
using Quill::QuillType;
using Quill::Bridging::QuillFdbStatus;
using Quill::Bridging::Status;

namespace {

HostKey keyOf( unsigned number ) {
  return HostKey( Fid( 1 ),
                  Wirex::EthAddr( 0, 0, 0x5e, 0, 0x53, static_cast< Koi::U8 >( number ) ) );
}
QuillFdbStatus entry( unsigned number, unsigned moves = 0 ) {
  return QuillFdbStatus( keyOf( number ), Wirex::IntfId(), moves, 0,
                         Bridging::EntryType::learnedDynamicMac );
}

struct Watcher : Status::NotifieeConst {
  void onQuillFdbStatus() override { ++numReady; }
  void onQuillFdbStatus( HostKey const & k ) override { told.push_back( k ); }

  int numReady = 0;
  std::vector< HostKey > told;
};

struct TableOfEntity : testing::Test, TableFixture {
  TableOfEntity() {
    setenv( "LUMO_SHM_ROOT", shm.path().c_str(), 1 );
    watcher.notifierIs( status.ptr() );
  }
  ~TableOfEntity() override { unsetenv( "LUMO_SHM_ROOT" ); }

  std::set< std::string > tables() const {
    std::set< std::string > names;
    for( auto const & at : std::filesystem::directory_iterator( shm.path() ) )
      if( at.is_directory() )
        names.insert( at.path().filename() );
    return names;
  }

  Koi::Ptr< Status > const status = Quill::Bridging::statusFactory( Koi::Name( "bridge" ) );
  Watcher watcher;
};

TEST_F( TableOfEntity, isWrittenAndToldLikeAnyOther ) {
  status->quillFdbStatusControl().init( QuillType::writer, true, 100, parameters() );
  EXPECT_EQ( watcher.numReady, 1 );
  // Only what changes is told.
  for( auto const & e : { entry( 1 ), entry( 1 ), entry( 2 ), entry( 1, 5 ) } )
    status->quillFdbStatusIs( e );
  EXPECT_EQ( watcher.told, ( std::vector{ keyOf( 1 ), keyOf( 2 ), keyOf( 1 ) } ) );
  EXPECT_EQ( status->quillFdbStatus( keyOf( 1 ) ), entry( 1, 5 ) );
  EXPECT_EQ( status->quillFdbStatus( keyOf( 3 ) ), QuillFdbStatus() );
  // A walk meets each once, and may delete what it meets.
  for( unsigned i = 3; i <= 50; ++i )
    status->quillFdbStatusIs( entry( i ) );
  std::set< std::string > met;
  for( auto i = status->quillFdbStatusIterator(); i; ++i ) {
    EXPECT_TRUE( met.insert( std::string( Koi::valueToStrep( i.key() ) ) ).second );
    if( i.value().key().addr().bytes()[5] > 2 ) {
      EXPECT_EQ( status->quillFdbStatusDel( i ).key(), i.key() );
    }
  }
  EXPECT_EQ( met.size(), 50u );
  EXPECT_EQ( status->quillFdbStatus().size(), 2u );
  EXPECT_EQ( status->quillFdbStatusDel( keyOf( 9 ) ), QuillFdbStatus() );
  // In place: nobody sees it before it is completed.
  watcher.told.clear();
  status->newQuillFdbStatus( entry( 2, 7 ) );
  EXPECT_EQ( watcher.told.size(), 0u );
  status->quillFdbStatusCommit( entry( 2, 7 ) );
  EXPECT_EQ( status->quillFdbStatus( keyOf( 2 ) ).moves(), 7u );
  status->quillFdbStatusNotify( keyOf( 2 ) );
  status->quillFdbStatusNotifyCollection();
  EXPECT_EQ( watcher.numReady, 2 );
  status->quillFdbStatusDelAll();
  EXPECT_EQ( watcher.told,
             ( std::vector{ keyOf( 2 ), keyOf( 2 ) } ).size() == 2 && watcher.told.size() == 4
                 ? watcher.told
                 : std::vector< HostKey >() );
  EXPECT_TRUE( status->quillFdbStatus().empty() );
}

TEST_F( TableOfEntity, isReadByTheEntityOfAnotherProcess ) {
  auto const other = Quill::Bridging::statusFactory( Koi::Name( "copy" ) );
  Watcher watching;
  watching.notifierIs( other.ptr() );
  other->quillFdbStatusControl().init( QuillType::shadow, false, 1, parameters() );
  EXPECT_EQ( refusal< Koi::ReadOnlyException >( [&] { other->quillFdbStatusIs( entry( 1 ) ); } ),
             "copy.quillFdbStatus is written by another process" );
  status->quillFdbStatusControl().init( QuillType::writer, true, 100, parameters() );
  status->quillFdbStatusIs( entry( 1 ) );
  ASSERT_TRUE( runUntil( [&] { return watching.numReady == 1; } ) );
  EXPECT_EQ( other->quillFdbStatus( keyOf( 1 ) ), entry( 1 ) );
  status->quillFdbStatusIs( entry( 2 ) );
  status->quillFdbStatusDel( keyOf( 1 ) );
  ASSERT_TRUE( runUntil( [&] { return watching.told.size() == 2; } ) );
  EXPECT_FALSE( other->quillFdbStatus().contains( keyOf( 1 ) ) );
  // All of it once more, which is what a late observer asks for.
  watching.told.clear();
  other->quillFdbStatusControl().map().tellAll();
  ASSERT_TRUE( runUntil( [&] { return !watching.told.empty(); } ) );
  EXPECT_EQ( watching.told, std::vector{ keyOf( 2 ) } );
}

TEST_F( TableOfEntity, isSaidToBeThereAlsoWhenItComesLate ) {
  status->quillFdbStatusControl().init( QuillType::reader, true, 1, parameters() );
  EXPECT_EQ( watcher.numReady, 0 );
  auto const other = Quill::Bridging::statusFactory( Koi::Name( "other" ) );
  other->quillFdbStatusControl().init( QuillType::writer, true, 100, parameters() );
  other->quillFdbStatusIs( entry( 1 ) );
  ASSERT_TRUE( runUntil( [&] { return watcher.numReady == 1; } ) );
  EXPECT_EQ( status->quillFdbStatus().size(), 1u );
}

TEST_F( TableOfEntity, isPrivateWhenNobodySaidWhose ) {
  EXPECT_TRUE( status->quillFdbStatus().empty() );
  EXPECT_EQ( tables().size(), 0u );  // looking makes none
  // What a process that was killed left goes when the next one makes its own; what somebody else
  // has does not.
  pid_t const child = fork();
  if( child == 0 ) {
    Quill::Bridging::statusFactory( Koi::Name( "b" ) )->quillFdbStatusIs( entry( 1 ) );
    auto const kept = Quill::Bridging::statusFactory( Koi::Name( "c" ) );
    kept->quillFdbStatusIs( entry( 1 ) );
    _exit( tables().size() == 1 ? 0 : 1 );
  }
  int ended = 0;
  waitpid( child, &ended, 0 );
  EXPECT_EQ( ended, 0 );
  auto const left = tables();
  ASSERT_EQ( left.size(), 1u );
  EXPECT_TRUE( left.begin()->starts_with( "QuillTemp-" + std::to_string( child ) ) );

  status->quillFdbStatusIs( entry( 1 ) );
  EXPECT_TRUE( status->quillFdbStatusControl().isPrivate() );
  EXPECT_EQ( status->quillFdbStatus( keyOf( 1 ) ), entry( 1 ) );
  ASSERT_EQ( tables().size(), 1u );
  EXPECT_NE( tables(), left );
  auto const bridge = Bridging::statusFactory( Koi::Name( "bridge" ) );
  bridge->quillFdbStatusIs( entry( 5 ) );
  EXPECT_EQ( tables().size(), 2u );
  // Nobody can say otherwise any more.
  EXPECT_NE( refusal< Rova::InvalidInitializeException >( [&] {
               bridge->quillFdbStatusControl().init( QuillType::shadow, false, 1, parameters() );
             } ).find( "already initialized with mode:writer" ),
             std::string::npos );
}

TEST_F( TableOfEntity, ofAPrivateKindGoesWithItsEntity ) {
  auto bridge = Bridging::statusFactory( Koi::Name( "bridge" ) );
  bridge->quillFdbStatusIs( entry( 5 ) );
  EXPECT_EQ( tables().size(), 1u );
  bridge = nullptr;
  EXPECT_EQ( tables().size(), 0u );
  setenv( "LUMO_SHM_ROOT", "/proc/lumo", 1 );
  auto const why = refusal< Rova::InvalidInitializeException >(
      [&] { status->quillFdbStatusIs( entry( 1 ) ); } );
  EXPECT_TRUE(
      why.starts_with( "QuillMap::createDefaultLocalWriter(): unable to initialize local "
                       "QuillTemporary: cannot " ) )
      << why;
}

TEST_F( TableOfEntity, isSeenByReflection ) {
  status->quillFdbStatusControl().init( QuillType::writer, true, 100, parameters() );
  status->quillFdbStatusIs( entry( 4 ) );
  Koi::Ptr< Koi::Entity > const entity = status;
  auto const wrapped = Koi::genericIf( entity );
  auto const & type = *entity->koiType();
  ASSERT_EQ( type.fields.size(), 2u );
  EXPECT_STREQ( type.fields[0].name, "quillFdbStatus" );
  EXPECT_STREQ( type.fields[1].name, "quillFdbStatusControl" );
  Koi::GenericIfOp const read{ 0, Koi::GenericIfOp::read };
  auto const found =
      type.genericIfAttributeOp( *wrapped, read, { Koi::genericIf( keyOf( 4 ) ) }, nullptr );
  ASSERT_TRUE( found );
  EXPECT_EQ( found->strRep(), Koi::valueToStrep( entry( 4 ) ) );
  EXPECT_FALSE(
      type.genericIfAttributeOp( *wrapped, read, { Koi::genericIf( keyOf( 5 ) ) }, nullptr ) );
  EXPECT_EQ(
      type.genericIfAttributeOp( *wrapped, { 1, Koi::GenericIfOp::read }, {}, nullptr )->strRep(),
      Koi::String8( "'writer'" ) );
  int count = 0;
  for( auto const walk = type.genericIfAttributeIterator( *wrapped, 0, nullptr );
       walk->iterNonnull(); walk->iterInc(), ++count )
    EXPECT_EQ( walk->iterKey()->strRep(), Koi::valueToStrep( keyOf( 4 ) ) );
  EXPECT_EQ( count, 1 );
}

TEST_F( TableOfEntity, isMountedByPath ) {
  Koi::Ptr< KoiQuill::EntityManager > const manager =
      new KoiQuill::EntityManager( activity.ptr(), shm.root() );
  KoiQuill::MountInfo write{ QuillType::writer, {} };
  auto const refused = [&]( std::string const & path, std::string const & type,
                            KoiQuill::MountInfo const & info ) {
    return refusal< Koi::Exception >( [&] { manager->doMount( path, type, info ); } );
  };
  EXPECT_EQ( refused( "bridging/fdb", "Quill::Bridging::Status", write ),
             "bridging/fdb: no size is given for the table quillFdbStatus" );
  write.newCollectionInfo( "quillFdbStatus", 100 );
  EXPECT_EQ( refused( "bridging/fdb", "Quill::Bridging::Staus", write ),
             "type 'Quill::Bridging::Staus' is not registered" );
  EXPECT_EQ( refused( "bridging/fdb", "Bridging::Config", write ),
             "bridging/fdb: Bridging::Config has no table in shared memory" );
  write.newCollectionInfo( "fdb", 100 );
  EXPECT_EQ( refused( "bridging/fdb", "Quill::Bridging::Status", write ),
             "bridging/fdb: Quill::Bridging::Status has no table fdb" );
  write.collections.pop_back();
  EXPECT_FALSE( manager->getEntity( "bridging/fdb" ) );

  manager->doMount( "bridging/fdb", "Quill::Bridging::Status", write );
  Koi::Ptr< Status > const writer = manager->getEntity< Status >( "bridging/fdb" );
  ASSERT_TRUE( writer );
  EXPECT_EQ( writer->name(), Koi::Name( "fdb" ) );
  ASSERT_TRUE( runUntil( [&] { return writer->quillFdbStatusControl().isReady(); } ) );
  writer->quillFdbStatusIs( entry( 1 ) );
  EXPECT_EQ( refused( "bridging/fdb", "Quill::Bridging::Status", write ),
             "bridging/fdb is mounted already" );
  Koi::Ptr< KoiQuill::EntityManager > const elsewhere =
      new KoiQuill::EntityManager( activity.ptr(), shm.root() );
  elsewhere->doMount( "bridging/fdb", "Quill::Bridging::Status", {} );
  Koi::Ptr< Status > const reader = elsewhere->getEntity< Status >( "bridging/fdb" );
  ASSERT_TRUE( runUntil( [&] { return reader->quillFdbStatus().size() == 1; } ) );
  EXPECT_TRUE( std::filesystem::exists( shm.path() + "/bridging/fdb/quillFdbStatus/lock" ) );
  elsewhere->unmount( "bridging/fdb" );
  EXPECT_FALSE( elsewhere->getEntity( "bridging/fdb" ) );
  elsewhere->doMount( "bridging/fdb", "Quill::Bridging::Status", { QuillType::reader, {}, true } );
  EXPECT_EQ( elsewhere->getEntity< Status >( "bridging/fdb" )->quillFdbStatus().size(), 1u );
}

}  // namespace
