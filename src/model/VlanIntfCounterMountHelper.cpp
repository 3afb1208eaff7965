#include <koi/EntityPath.h>
#include <koi/Exception.h>
#include <model/VlanIntfCounterMountHelper.h>

namespace Interface {
namespace {

std::string pathOf( Koi::Name const & name ) {
  return "counters/vlanIntf/" + Koi::escapedName( name.view() );
}

}  // namespace

VlanIntfCounterMountHelper::VlanIntfCounterMountHelper(
    Koi::Ptr< KoiQuill::EntityManager > const & manager )
    : manager_( manager ) {
  if( !manager )
    Koi::throwRangeException( "null entity manager not allowed" );
}

Koi::Ptr< AllVlanIntfCounterQuill > VlanIntfCounterMountHelper::doMount( Koi::Name const & name ) {
  std::string const path = pathOf( name );
  if( auto const there = manager_->getEntity< AllVlanIntfCounterQuill >( path ) )
    return there;
  KoiQuill::MountInfo info;
  info.mode = Quill::QuillType::reader;
  info.synchronous = true;
  return mounted( path, info );
}

Koi::Ptr< AllVlanIntfCounterQuill > VlanIntfCounterMountHelper::doMountWrite(
    Koi::Name const & name, unsigned size ) {
  KoiQuill::MountInfo info;
  info.mode = Quill::QuillType::writer;
  info.newCollectionInfo( "counter", size );
  return mounted( pathOf( name ), info );
}

Koi::Ptr< AllVlanIntfCounterQuill > VlanIntfCounterMountHelper::mounted(
    std::string const & path, KoiQuill::MountInfo const & info ) {
  manager_->doMount( path, AllVlanIntfCounterQuill::koiName, info );
  return manager_->getEntity< AllVlanIntfCounterQuill >( path );
}

Koi::Ptr< VlanIntfCounterMountHelper > vlanIntfCounterMountHelperFactory(
    Koi::Ptr< KoiQuill::EntityManager > const & manager ) {
  return new VlanIntfCounterMountHelper( manager );
}

}  // namespace Interface
