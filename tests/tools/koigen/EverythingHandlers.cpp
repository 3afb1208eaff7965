// EverythingHandlers.cpp: what Everything.koi leaves to be written by hand.
#include "EverythingHandlers.h"

#include <utility>

namespace Everything {
namespace {

HandlerLog * current = nullptr;

std::string text( auto const & v ) { return std::string( Koi::valueToStrep( v ) ); }

}  // namespace

HandlerLog::HandlerLog( Handled act ) : act_( std::move( act ) ) { current = this; }
HandlerLog::~HandlerLog() { current = nullptr; }
std::vector< std::string > HandlerLog::taken() { return std::exchange( calls_, {} ); }

void handled( RoomKeeper & keeper, std::string const & what ) {
  if( !current )
    return;
  current->calls_.push_back( what );
  if( current->act_ )
    current->act_( keeper, what );
}

Koi::U32 Lamp::brightness() const { return lit() ? watts() : 0; }
bool Lamp::isLike( Lamp const & other ) const {
  return label() == other.label() && watts() == other.watts();
}
void Lamp::doReset() {
  litIs( false );
  labelIs( "" );
}
Koi::String8 Lamp::kind() const { return "lamp"; }
Koi::String8 Spotlight::kind() const { return "spotlight"; }

void RoomKeeper::handleInitialized() {
  initializedIs( true );
  handled( *this, "initialized" );
  if( room() )
    for( auto const & i : room()->shelf() )
      shelfIs( i.key(), i.value() );
}
void RoomKeeper::handleShelf( ShelfNumber const & key ) {
  shelfIs( key, room()->shelf( key ) );
  handled( *this, "shelf " + text( key ) );
}
void RoomKeeper::handleMainLamp() { handled( *this, "mainLamp" ); }
void RoomKeeper::handleColorCount( Color ) { handled( *this, "colorCount" ); }
void RoomKeeper::handleLit() {
  stepIs( step() + 1 );
  heardEnq( step() );
  handled( *this, "lit" );
}
void RoomKeeper::handleBook( ShelfNumber const & watched, Koi::String8 const & key ) {
  seenIs( key, seen( key ) + 1 );
  handled( *this, "book " + text( watched ) + " " + std::string( key.view() ) );
}
void RoomKeeper::handleCleanup() { handled( *this, "cleanup" ); }

void LampKeeper::handleLit() {
  if( lamp() )
    lamp()->dimmedIs( lamp()->brightness() / 4 );
}
void LampKeeper::handleCleanup() {
  if( lamp() )
    lamp()->labelIs( "over" );
}

void ShelfKeeper::handleInitialized() {
  if( keeper() )
    handled( *keeper(), "start at " + text( number() ) );
}
void ShelfKeeper::handleBook( Koi::String8 const & key ) {
  handled( *keeper(), "at " + text( number() ) + " " + std::string( key.view() ) );
}
void ShelfKeeper::handleCleanup() {
  if( keeper() )
    handled( *keeper(), "cleanup at " + text( number() ) );
}

void Bystander::handleInitialized() {}

}  // namespace Everything
