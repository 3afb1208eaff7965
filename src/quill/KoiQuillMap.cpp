#include <quill/KoiQuillMap.h>

#include <koi/Assert.h>
#include <koi/Exception.h>
#include <mem/Rova.h>
#include <quill/PrivateTable.h>

namespace KoiQuill {

using Quill::QuillType;

namespace {

/// The most entries of a private table: as many as a writer may ask for by default.
constexpr U32 privateSize = 1 << 24;

}  // namespace

KoiQuillMapBase::KoiQuillMapBase( Koi::Entity & owner, char const * name,
                                  Koi::AttributeCallback<> const & onCollection )
    : owner_( owner ), name_( name ), onCollection_( onCollection ) {}

KoiQuillMapBase::~KoiQuillMapBase() {
  if( !isPrivate_ )
    return;
  Mem::RootPath const root( map_->rootPath() );
  std::string const name = map_->quillName();
  map_.reset();
  Quill::removePrivateTable( root, name );
}

void KoiQuillMapBase::init( QuillType type, bool synchronous, U32 size,
                            Quill::QuillParameters parameters, std::string const & quillName ) {
  if( map_ )
    return map_->init( type, synchronous, size, std::move( parameters ) );  // which refuses
  map_ = made( quillName.empty() ? name_ : quillName );
  try {
    map_->init( type, synchronous, size, std::move( parameters ) );
    if( type == QuillType::shadow || type == QuillType::keyshadow )
      map_->notifying( true );
  } catch( ... ) {  // whatever it was, it is the caller's
    map_.reset();
    throw;
  }
  if( synchronous && map_->isCollectionReady() )
    collectionIsReady();
}

Quill::QuillMapState & KoiQuillMapBase::map() const {
  KOI_ASSERT( initialized() );
  return *map_;
}

void KoiQuillMapBase::corruptionDetected( std::string const & message ) {
  if( map_ )
    map_->corruptionDetected( message );
}

Koi::String8 KoiQuillMapBase::koiControl() const {
  if( !map_ )
    return "none";
  return ( isPrivate_ ? "private " : "" ) + Quill::quillTypeName( map_->mode() );
}

Quill::QuillMapState & KoiQuillMapBase::written() {
  if( !map_ )
    createDefaultLocalWriter();
  if( map_->mode() != QuillType::writer )
    throw Koi::ReadOnlyException( std::string( owner_.fullName() ) + "." + name_ +
                                  " is written by another process" );
  return *map_;
}

void KoiQuillMapBase::createDefaultLocalWriter() {
  Ntrace::standard().trace( 2, "KoiQuillMap::entity() creating local QuillWriter" );
  try {
    init( QuillType::writer, true, privateSize, {}, Quill::newPrivateName( Mem::RootPath() ) );
  } catch( Koi::Exception const & e ) {
    std::string const why =
        "QuillMap::createDefaultLocalWriter(): unable to initialize local QuillTemporary: " +
        std::string( e.what() );
    Ntrace::standard().trace( 0, why );
    throw Rova::InvalidInitializeException( why );
  }
  isPrivate_ = true;
}

}  // namespace KoiQuill
