#include "Publication.h"

#include <mem/Rova.h>
#include <quill/QuillException.h>
#include <reactors/FdbCopy.h>

namespace Learn {

using Quill::QuillType;

namespace {

Koi::Ptr< Quill::Bridging::Status > tableOf( QuillType mode, Koi::Activity * activity,
                                             TablePlace const & place ) {
  auto const table = Quill::Bridging::statusFactory( Koi::Name( "fdb" ) );
  Quill::QuillParameters parameters;
  parameters.activity = activity;
  parameters.root = place.root;
  parameters.classType = "Quill::Bridging::Status";
  table->quillFdbStatusControl().init( mode, true, Publication::sizeMax, parameters, place.name );
  return table;
}

}  // namespace

Koi::Ptr< Bridging::Status > hostsLeft( TablePlace const & place,
                                        void ( *complain )( std::string const & why ) ) {
  auto const status = Bridging::statusFactory( Koi::Name( "status" ) );
  auto const activity = Koi::activityFactory();
  try {
    Bridging::copyFdb( *tableOf( QuillType::reader, activity.ptr(), place ), *status );
    return status;
  } catch( Rova::CorruptionDetectedException const & e ) {
    complain( "the table " + place.name +
              " that was left is damaged, and begins anew: " + e.what() );
  } catch( Quill::ReaderStarvedException const & ) {
    complain( "the table " + place.name + " is being written" );
  }
  return Bridging::statusFactory( Koi::Name( "status" ) );
}

Publication::Publication( Koi::Activity * activity, TablePlace const & place,
                          Koi::Ptr< Bridging::Status > const & status )
    : table_( tableOf( QuillType::writer, activity, place ) ),
      mirror_( Bridging::writerFdbStatusSmFactory( status, table_ ) ) {}

Publication::~Publication() { mirror_->koiDoZombieReactors( true ); }

}  // namespace Learn
