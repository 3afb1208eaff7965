// AttachedReader.h: how a reader comes by a table's files, which a writer may be replacing at that
// moment. What it gets stays as it is when the files are replaced.
#pragma once

#include <memory>
#include <string>

#include <mem/Plain.h>
#include <quill/ConquerReader.h>
#include <quill/TableReader.h>

namespace Quill {

/// Tries ten times: a live file changes between two looks, so who fails validation is looked at
/// again.
template< class Attempt >
auto attachedInTime( Attempt attempt ) {
  constexpr int attempts = 10;
  for( int i = 1;; ++i )
    try {
      return attempt();
    } catch( Rova::CorruptionDetectedException const & ) {
      if( i == attempts )
        throw;
    }
}

/// Whether the table's files are others by now.
inline bool isReplaced( Mem::TableDir const & dir, Mem::MappedFile const & slots ) {
  auto const now = dir.open( SlotTable::fileName, Mem::MappedFile::readOnly );
  return !now || !slots.isSameFile( *now );
}
/// The same by the table's name, whose directory may be another one, or none.
inline bool isReplaced( Mem::RootPath const & root, std::string const & name,
                        Mem::MappedFile const & slots ) {
  try {
    return isReplaced( Mem::TableDir( root, name, Mem::MappedFile::readOnly ), slots );
  } catch( Rova::MemoryResourceException const & ) {
    return true;
  }
}

/// Reads what stands in the directory. Raises Rova::MemoryResourceException "SlotReader::attach()
/// no shared memory region: <path>", "BucketReader::attach() no shared memory region: <path>" and
/// "QuillReader::initialize() failed to read kindle file"; Rova::CorruptionDetectedException
/// "QuillReader::initialize() failed to validate buckets: <why>" and "QuillReader::initialize()
/// failed to validate slots: <why>".
template< class R >
std::unique_ptr< TableReader< R, Mem::Plain > > attachedReader( Mem::TableDir const & dir,
                                                                Ntrace::Handler const & trace ) {
  using Mem::MappedFile;
  static Ntrace::Handler const silent( -1, {} );
  auto reader = attachedInTime( [&] {
    auto const opened = [&]( char const * file, char const * failed, std::string const & missing ) {
      if( auto mapped = dir.open( file, MappedFile::readOnly ) )
        return mapped;
      trace.trace( 5, failed );
      throw Rova::MemoryResourceException( missing + dir.path() + "/" + file );
    };
    auto buckets =
        opened( BucketTable::fileName, "QuillReader::initialize() failed to attach to buckets",
                "BucketReader::attach() no shared memory region: " );
    auto slots = opened( SlotTable::fileName, "QuillReader::initialize() failed to attach to slots",
                         "SlotReader::attach() no shared memory region: " );
    // Slots come last when a table is formatted: old buckets under new slots are noticed here.
    if( auto const now = dir.open( BucketTable::fileName, MappedFile::readOnly );
        !now || !buckets->isSameFile( *now ) )
      throw Rova::CorruptionDetectedException(
          "QuillReader::initialize() failed to validate buckets: formatted meanwhile" );
    U32 const kindle = dir.kindle();
    if( kindle == 0 )
      throw Rova::MemoryResourceException( "QuillReader::initialize() failed to read kindle file" );
    std::string message;
    auto const bucketHeader =
        loadedHeader< Mem::Plain, BucketTable::Header >( buckets->base(), buckets->size() );
    if( !bucketHeader.validate( silent, buckets->size(), kindle, message ) )
      throw Rova::CorruptionDetectedException(
          "QuillReader::initialize() failed to validate buckets: " + message );
    auto const slotHeader =
        loadedHeader< Mem::Plain, SlotTable::Header >( slots->base(), slots->size() );
    if( !slotHeader.validate( silent, slots->size(), kindle, message ) ||
        !slotHeader.isOf( { R::valueType, slotHeader.classTypeName(), R::valueSize, 0, 0 },
                          message ) )
      throw Rova::CorruptionDetectedException(
          "QuillReader::initialize() failed to validate slots: " + message );
    return std::make_unique< TableReader< R, Mem::Plain > >( std::move( slots ),
                                                             std::move( buckets ) );
  } );
  trace.trace( 5, "QuillReader::initialize() success" );
  return reader;
}

/// The same for who makes a copy, of the keys alone or of all. Raises besides
/// Rova::MemoryResourceException "KeyShadowStore::initialize() failed to map kindle: <path>" and
/// Rova::CorruptionDetectedException "QuillShadow::initialize() slot capacity must be greater than
/// 0".
template< class R >
std::unique_ptr< TableReader< R, Mem::Plain > > readerForCopy( Mem::TableDir const & dir,
                                                               bool ofKeysAlone,
                                                               Ntrace::Handler const & trace ) {
  if( ofKeysAlone && dir.kindle() == 0 )
    throw Rova::MemoryResourceException( "KeyShadowStore::initialize() failed to map kindle: " +
                                         dir.path() );
  auto reader = attachedReader< R >( dir, trace );
  if( reader->slots().loaded().numSlots.ref == 0 )
    throw Rova::CorruptionDetectedException(
        "QuillShadow::initialize() slot capacity must be greater than 0" );
  return reader;
}

/// The notification queue in the directory, whose table's slots are those. Raises
/// Rova::CorruptionDetectedException "ConquerReader::initialize() failed validation,
/// reason:<why>".
inline std::unique_ptr< ConquerReader< Mem::Plain > > attachedQueue(
    Mem::TableDir const & dir, Mem::MappedFile const & slots, Ntrace::Handler const & trace ) {
  static Ntrace::Handler const silent( -1, {} );
  return attachedInTime( [&] {
    ConquerReader< Mem::Plain >::Files files;
    std::string why;
    for( U32 const id : { conquer1, conquer2 } ) {
      files[id] = dir.open( ConquerTable::fileName[id], Mem::MappedFile::readOnly );
      if( !files[id] )
        why = std::string( ConquerTable::fileName[id] ) + " is missing";
      else if( auto const header = loadedHeader< Mem::Plain, ConquerTable::Header >(
                   files[id]->base(), files[id]->size() );
               why.empty() )
        header.validate( silent, files[id]->size(), dir.kindle(), why );
    }
    // The queue goes with the slots: both are put in place before these are.
    if( why.empty() && isReplaced( dir, slots ) )
      why = "formatted meanwhile";
    if( !why.empty() )
      throw Rova::CorruptionDetectedException(
          "ConquerReader::initialize() failed validation, reason:" + why );
    return std::make_unique< ConquerReader< Mem::Plain > >( std::move( files ), trace );
  } );
}

}  // namespace Quill
