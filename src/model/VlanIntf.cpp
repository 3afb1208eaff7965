// VlanIntf.cpp: how a VLAN interface finds its counters, and what a view of them says.

#include <Lumo/VlanIntf.h>

#include <coredb/Tree.h>
#include <interface/IntfCounterSearch.h>
#include <koi/EntityPath.h>
#include <koi/Exception.h>
#include <mem/Rova.h>
#include <model/VlanIntfCounterMountHelper.h>
#include <ntrace/Ntrace.h>
#include <quill/QuillException.h>

namespace Interface {
namespace {

std::string_view withoutSlash( std::string_view path ) {
  return path.substr( path.starts_with( '/' ) );
}

/// The table of a system as this process reads it; mounted when nobody did. Null, and traced, when
/// it cannot be.
Koi::Ptr< AllVlanIntfCounterQuill > cohabitingTable( Koi::String8 const & sysname ) {
  // Never destroyed: its tables may be looked into when the program ends.
  static auto const & helper = *new Koi::Ptr< VlanIntfCounterMountHelper >(
      vlanIntfCounterMountHelperFactory( new KoiQuill::EntityManager ) );
  try {
    return helper->doMount( Koi::Name( sysname.view() ) );
  } catch( Koi::Exception const & e ) {  // a look-up raises nothing: there are no counters
    Ntrace::standard().trace( 0, "VlanIntfStatusCounter: cannot mount the table of ", sysname, ": ",
                              e.what() );
    return nullptr;
  }
}

Koi::Ptr< AllVlanIntfCounterQuill > tableOf( VlanIntfCounterArgs const & args ) {
  if( args.sysname().empty() )
    return nullptr;
  if( args.cohabiting() )
    return cohabitingTable( args.sysname() );
  return Coredb::entityAt< AllVlanIntfCounterQuill >( "Quill/counters/vlanIntf/" +
                                                      Koi::escapedName( args.sysname().view() ) );
}

/// The entry of that interface; nothing when there is none, or it cannot be read.
std::optional< VlanIntfCounterQuill > entryOf( Koi::Ptr< AllVlanIntfCounterQuill > const & table,
                                               Wirex::IntfId const & intfId ) {
  try {
    return table ? table->counter().lookup( intfId ) : std::nullopt;
  } catch( Rova::CorruptionDetectedException const & e ) {
    table->counterControl().corruptionDetected( e.what() );
  } catch( Quill::ReaderStarvedException const & e ) {
    Ntrace::standard().trace( 0, "VlanIntfStatusCounter: ", intfId.stringValue(), ": ", e.what() );
  }
  return std::nullopt;
}

/// The counters of an interface whose directory says that they are in shared memory.
Koi::Ptr< IntfCounter > quillCounter( VlanIntfStatus const & status,
                                      IntfStatusDirBase const & dir ) {
  Koi::String8 const path = dir.counterDirPath();
  if( auto const held = dir.counterDir();
      held && withoutSlash( held->fullName().view() ) != withoutSlash( path.view() ) )
    Ntrace::standard().trace( 5, "Vlan counterDirPath ", path, " does not match counterDir" );
  auto const table = Coredb::entityAt< AllVlanIntfCounterQuill >( path.view() );
  if( !table ) {
    Ntrace::standard().trace( 5, "Vlan Quill counterDir is null" );
    return nullptr;
  }
  auto const counter =
      vlanIntfStatusCounterFactory( Koi::Name( "current" ), status.intfId(), status.counterArgs() );
  counter->tableIs( table );
  return counter;
}

}  // namespace

// ---- configuration

Koi::Ptr< VlanIntfConfig > VlanIntfConfigDir::newIntfConfig( Wirex::IntfId const & intfId ) {
  return intfConfigIs( intfId );
}

void Input::VlanIntfAddr::newVlanIntf( Wirex::IntfId const & intfId, bool on ) {
  vlanIntfIs( intfId, on );
}

// ---- status

Koi::String8 getSysnameFromEntity( Koi::Entity const & entity ) {
  Koi::Entity const * const coredb = getParentEntityByName( entity, Koi::String8( "Coredb" ) );
  if( !coredb )
    return {};
  if( !coredb->parent() ) {
    Ntrace::standard().trace( 5, "Unable to access parent of Coredb root" );
    return {};
  }
  Koi::String8 const sysname( coredb->parent()->name().view() );
  Ntrace::standard().trace( 7, "Derived sysname: ", sysname );
  return sysname;
}

bool getCohabiting() {
  bool const cohabiting = !Coredb::globalDirectory()->entity( Koi::Name( "AgentEnv" ) );
  Ntrace::standard().trace( 7, "Derived cohabiting: ", Koi::valueToStrep( cohabiting ) );
  return cohabiting;
}

VlanIntfCounterArgs VlanIntfStatus::counterArgs() const {
  Koi::String8 const sysname = getSysnameFromEntity( *this );
  return sysname.empty() ? VlanIntfCounterArgs() : VlanIntfCounterArgs( sysname, getCohabiting() );
}

Koi::Ptr< VlanIntfStatusCounter > VlanIntfStatus::vlanCounter() {
  if( vlanCounterView_ )
    return vlanCounterView_;
  VlanIntfCounterArgs const args = counterArgs();
  if( args == VlanIntfCounterArgs() ) {
    Ntrace::standard().trace( 5, "VlanIntfCounter args not initialized, returning nullptr" );
    return nullptr;
  }
  auto const view = vlanIntfStatusCounterFactory( Koi::Name( "current" ), intfId(), args );
  if( !view->exists() )
    return nullptr;
  vlanCounterView_ = view;
  return view;
}

Koi::Ptr< IntfCounter > VlanIntfStatus::counter() const {
  auto const * const dir = dynamic_cast< IntfStatusDirBase const * >( parent() );
  return dir && isQuillPath( dir->counterDirPath() ) ? quillCounter( *this, *dir )
                                                     : counterCommon( *this );
}

// ---- a view of the table

void VlanIntfStatusCounter::tableIs( Koi::Ptr< AllVlanIntfCounterQuill > const & table ) {
  table_ = table;
}

bool VlanIntfStatusCounter::exists() const {
  return entryOf( table_ ? table_ : tableOf( counterArgs() ), intfId() ).has_value();
}

VlanIntfCounterQuill VlanIntfStatusCounter::record() const {
  return entryOf( table_ ? table_ : tableOf( counterArgs() ), intfId() )
      .value_or( VlanIntfCounterQuill( intfId() ) );
}

VlanIntfStatistics VlanIntfStatusCounter::vlanStatistics() const {
  return record().vlanStatistics();
}
IntfStatistics VlanIntfStatusCounter::statistics() const { return record().statistics(); }
IntfCounterRates VlanIntfStatusCounter::rates() const { return record().rates(); }
Koi::U32 VlanIntfStatusCounter::linkStatusChanges() const { return record().linkStatusChanges(); }
Koi::U32 VlanIntfStatusCounter::genId() const { return record().genId(); }

// ---- directories of counters

Koi::Ptr< IntfCounter > VlanIntfCounterDir::doGetIntfCounter( Koi::Name const & name ) const {
  return intfCounter( name );
}

Koi::Ptr< IntfCounterDirBase > AllVlanIntfCounterDir::doGetIntfCounterDir(
    Wirex::IntfId const & intfId ) const {
  return intfCounterDir( intfId );
}

}  // namespace Interface
