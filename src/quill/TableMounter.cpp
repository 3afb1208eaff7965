#include <quill/TableMounter.h>

#include <array>
#include <cstring>
#include <filesystem>

#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Quill {
namespace {

/// Whether something of that name says that the table, or who serves it, may have changed.
bool matters( std::string_view name ) { return !name.starts_with( "." ) && name != "lock"; }

}  // namespace

TableMounter::TableMounter( Koi::Activity * activity, Role role, Mem::RootPath root,
                            std::string name, TryAttach tryAttach, Ntrace::Handler const & trace )
    : activity_( activity ),
      role_( role ),
      root_( std::move( root ) ),
      name_( std::move( name ) ),
      tryAttach_( std::move( tryAttach ) ),
      trace_( trace ),
      timer_( activity, [this] { timeout(); } ) {
  timer_.delayIs( 0 );
}

TableMounter::~TableMounter() = default;

std::vector< TableMounter::Place > TableMounter::placesToWatch() const {
  namespace fs = std::filesystem;
  std::vector< Place > places;
  auto const add = [&]( fs::path const & path ) {
    struct stat about {};
    bool const isThere = stat( path.c_str(), &about ) == 0 && S_ISDIR( about.st_mode );
    if( isThere )
      places.push_back( { path.string(), about.st_dev, about.st_ino } );
    return isThere;
  };
  fs::path const root = root_.path();
  fs::path table = root / name_;
  while( !add( table ) && table.has_relative_path() )
    table = table.parent_path();
  if( root != table )
    add( root );
  return places;
}

void TableMounter::watch() {
  auto const places = placesToWatch();
  if( places == watched_ )
    return;
  watch_.reset();
  inotify_.reset( inotify_init1( IN_NONBLOCK | IN_CLOEXEC ) );
  watched_.clear();
  for( auto const & place : places ) {
    auto const & path = place.path;
    constexpr auto events = IN_CREATE | IN_MOVED_TO | IN_DELETE | IN_DELETE_SELF | IN_MOVE_SELF;
    if( inotify_.isOpen() &&
        inotify_add_watch( inotify_.number(), path.c_str(), events | IN_ONLYDIR ) >= 0 )
      continue;
    if( role_ == reader )
      trace_.trace( 2,
                    "ReaderMounter::ReaderMounter() failed to initialize watch, try to recompute "
                    "path ",
                    path );
    else
      trace_.trace( 2,
                    path == root_.path()
                        ? "WriterMounter::WriterMounter() unable to initialize watch for kindle "
                          "file in rootPath:"
                        : "WriterMounter::WriterMounter() unable to initialize watch for "
                          "rootPath:",
                    path );
    inotify_.reset();
    return;  // it looks by time, and tries to watch again
  }
  watched_ = places;
  watch_ = std::make_unique< Koi::DescriptorWatch >(
      activity_, inotify_.number(), Koi::DescriptorWatch::readable, [this] { notify(); } );
}

void TableMounter::notify() {
  alignas( inotify_event ) std::array< char, 4096 > bytes;
  bool isNews = false;
  for( ;; ) {
    auto const count = read( inotify_.number(), bytes.data(), bytes.size() );
    if( count <= 0 )
      break;
    for( char const * at = bytes.data(); at < bytes.data() + count; ) {
      inotify_event event;
      std::memcpy( &event, at, sizeof event );
      std::string_view const name = event.len ? at + sizeof event : "";
      trace_.trace( 7, "QuillMap::ReaderMounter::notify() eventName:", name );
      isNews = isNews || matters( name );
      // Of what was lost, some may have been of that kind.
      if( event.mask & ( IN_DELETE_SELF | IN_MOVE_SELF | IN_IGNORED | IN_Q_OVERFLOW ) )
        watched_.clear();
      at += sizeof event + event.len;
    }
  }
  if( !isNews )
    return;
  trace_.trace( 7, "QuillMap::ReaderMounter::notify() arming remount timer" );
  delay_ = firstDelay;
  timer_.delayIs( eventDelay );
}

void TableMounter::remount() {
  isAttached_ = false;
  timer_.delayIs( delay_ );
  delay_ = std::min( 2 * delay_, longestDelay );
}

void TableMounter::timeout() {
  watch();
  if( tryAttach_() ) {
    // What attaches and is found useless at once is not tried for ever at full speed.
    if( std::exchange( isAttached_, true ) )
      delay_ = firstDelay;
    timer_.delayIs( lookEvery );
    return;
  }
  isAttached_ = false;
  if( delay_ >= longestDelay )
    trace_.trace( 5, "remount timeout" );
  timer_.delayIs( delay_ );
  delay_ = std::min( 2 * delay_, longestDelay );
}

}  // namespace Quill
