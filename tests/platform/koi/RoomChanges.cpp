#include "RoomChanges.h"

namespace TestSupport {

using namespace Everything;

namespace {

std::string text( auto const & v ) {
  using Koi::valueToStrep;
  return std::string( valueToStrep( v ) );
}
std::string nameOf( unsigned which ) { return "lamp " + std::to_string( which ); }
Koi::Name lampName( unsigned which ) { return Koi::Name( nameOf( which ) ); }
ShelfNumber shelfNumber( unsigned which ) { return ShelfNumber( which + 1 ); }
Color color( unsigned which ) { return static_cast< Color >( which ); }
Book book( unsigned which, unsigned what ) {
  Book made( Koi::String8( "book " + std::to_string( which ) ) );
  made.spotIs( Spot( shelfNumber( which ), what ) );
  made.weightIs( what );
  return made;
}
Finding * finding( Room & room ) { return room.finding(); }

std::string lampText( bool lit, unsigned watts, std::string const & label ) {
  return std::to_string( lit ) + " " + std::to_string( watts ) + " " + label;
}
std::string lampText( Lamp const & lamp ) {
  return lampText( lamp.lit(), lamp.watts(), std::string( lamp.label() ) );
}
std::string lampText( PlainRoom::Lamp const & lamp ) {
  return lampText( lamp.lit, lamp.watts, lamp.label );
}
std::string wholeText( Lamp const & lamp ) {
  return lampText( lamp ) + " " + text( lamp.maker() ) + " " + text( lamp.spot() ) + " " +
         text( lamp.color() );
}
/// One that was taken out of the tree is what it was then, or later, at either end.
std::string referenceText( Lamp const * lamp ) {
  return lamp ? text( lamp->name() ) + ( lamp->parent() ? "" : " (out)" ) : "none";
}

}  // namespace

void RoomChange::apply( Room & room ) const {
  Koi::Ptr< Lamp > const lamp = room.lamp( lampName( which ) );
  Koi::Ptr< Shelf > const shelf = room.shelf( shelfNumber( which ) );
  switch( kind ) {
    case shelfIs:
      if( !shelf )
        room.shelfIs( shelfNumber( which ), what % 2 != 0, room.lamp( lampName( what ) ) );
      break;
    case shelfDel:
      room.shelfDel( shelfNumber( which ) );
      break;
    case bookIs:
      if( shelf )
        shelf->bookIs( book( what, which ) );
      break;
    case bookDel:
      if( shelf )
        shelf->bookDel( book( what, 0 ).title() );
      break;
    case lampIs:
      room.lampIs( lampName( which ) );
      break;
    case lampDel:
      room.lampDel( lampName( which ) );
      break;
    case lampAgain:
      room.lampDel( lampName( which ) );
      room.lampIs( lampName( which ) );
      break;
    case lampLit:
      if( lamp ) {
        lamp->litIs( !lamp->lit() );
        lamp->wattsIs( static_cast< Koi::U16 >( what * 10 ) );
      }
      break;
    case lampLabel:
      if( lamp )
        lamp->labelIs( Koi::String8( std::string( what, 'x' ) ) );
      break;
    case lampAngle:
      if( lamp ) {
        lamp->spotIs( Spot( shelfNumber( what ), which ) );
        lamp->makerIs( lampName( what ) );
      }
      break;
    case lampAtIs:
      if( lamp )
        room.lampAtIs( Spot( shelfNumber( what ), 0 ), lamp );
      break;
    case lampAtDel:
      room.lampAtDel( Spot( shelfNumber( what ), 0 ) );
      break;
    case mainLampIs:
      if( what == 0 )  // one that is in no room
        room.mainLampIs( lampFactory( lampName( which ) ) );
      else if( lamp )
        room.mainLampIs( lamp );
      break;
    case spareLampIs:
      room.spareLampIs( lamp );
      break;
    case countIs:
      room.colorCountIs( color( which ), what );
      break;
    case countDel:
      room.colorCountDel( color( which ) );
      break;
    case countAgain:
      room.colorCountDel( color( which ) );
      room.colorCountIs( color( which ), what );
      break;
    case visitorEnq:
      if( room.visitor().size() < 20 )
        room.visitorEnq( shelfNumber( what ) );
      break;
    case visitorDeq:
      room.visitorDeq();
      break;
    case visitorDel:
      room.visitorDel( static_cast< Koi::U8 >( room.visitorMetadata().head + which ) );
      break;
    case ceilingIs:
      room.ceilingIs( lampName( 0 ) )->wattsIs( static_cast< Koi::U16 >( what ) );
      break;
    case ceilingDel:
      room.ceilingDel();
      break;
    case findingIs:
      if( !finding( room ) )
        room.findingIs( lampName( which ), Koi::String8( nameOf( what ) ) );
      break;
    case findingDel:
      room.findingDel();
      break;
    case numKinds:
      break;
  }
}

void PlainRoom::apply( RoomChange const & change ) {
  auto const [kind, which, what] = change;
  auto const shelf = shelves.find( which );
  auto const lamp = lamps.find( nameOf( which ) );
  switch( kind ) {
    case RoomChange::shelfIs:
      if( shelf == shelves.end() )
        shelves[which].wide = what % 2 != 0;
      break;
    case RoomChange::shelfDel:
      shelves.erase( which );
      break;
    case RoomChange::bookIs:
      if( shelf != shelves.end() )
        shelf->second.books["book " + std::to_string( what )] = which;
      break;
    case RoomChange::bookDel:
      if( shelf != shelves.end() )
        shelf->second.books.erase( "book " + std::to_string( what ) );
      break;
    case RoomChange::lampIs:
      lamps.try_emplace( nameOf( which ) );
      break;
    case RoomChange::lampDel:
      lamps.erase( nameOf( which ) );
      break;
    case RoomChange::lampAgain:
      lamps[nameOf( which )] = {};
      break;
    case RoomChange::lampLit:
      if( lamp != lamps.end() ) {
        lamp->second.lit = !lamp->second.lit;
        lamp->second.watts = static_cast< Koi::U16 >( what * 10 );
      }
      break;
    case RoomChange::lampLabel:
      if( lamp != lamps.end() )
        lamp->second.label = std::string( what, 'x' );
      break;
    case RoomChange::countIs:
    case RoomChange::countAgain:
      counts[which] = what;
      break;
    case RoomChange::countDel:
      counts.erase( which );
      break;
    case RoomChange::visitorEnq:
      if( visitors.size() < 20 )
        visitors.emplace_back( nextVisitor++ % 256, what + 1 );
      break;
    case RoomChange::visitorDeq:
      if( !visitors.empty() )
        visitors.pop_front();
      break;
    case RoomChange::visitorDel:
      if( !visitors.empty() )
        std::erase_if( visitors, [number = ( visitors.front().first + which ) % 256](
                                     auto const & visitor ) { return visitor.first == number; } );
      break;
    case RoomChange::ceilingIs:
      hasCeiling = true;
      ceiling.watts = static_cast< Koi::U16 >( what );
      break;
    case RoomChange::ceilingDel:
      hasCeiling = false;
      break;
    case RoomChange::findingIs:
      if( finding.empty() )
        finding = nameOf( which ) + " by " + nameOf( what );
      break;
    case RoomChange::findingDel:
      finding.clear();
      break;
    default:
      break;  // references, of which the twin knows nothing
  }
}

std::string plainText( Room const & room ) {
  std::string all;
  for( auto const & i : room.shelf() ) {
    all += "shelf " + text( i.key() ) + " " + std::to_string( i.value()->wide() ) + ":";
    std::map< std::string, std::string > books;
    for( auto const & j : i.value()->book() )
      books[std::string( j.key() )] = text( j.value().weight() );
    for( auto const & [title, weight] : books )
      all += " " + title + "=" + weight;
    all += "\n";
  }
  std::map< std::string, std::string > lamps;
  for( auto const & i : room.lamp() )
    lamps[std::string( Koi::String8( i.key() ) )] = lampText( *i.value() );
  for( auto const & [name, lamp] : lamps )
    all += name + " " + lamp + "\n";
  for( auto const & i : room.colorCount() )
    all += "count " + std::to_string( i.key() ) + " " + std::to_string( i.value() ) + "\n";
  for( auto const & i : room.visitor() )
    all += "visitor " + std::to_string( i.key() ) + " " + text( i.value() ) + "\n";
  if( room.ceiling() )
    all += "ceiling " + lampText( *room.ceiling() ) + "\n";
  if( auto const found = room.finding() )
    all += "finding " + std::string( Koi::String8( found->name() ) ) + " by " +
           std::string( found->finder() ) + "\n";
  return all;
}

std::string plainText( PlainRoom const & room ) {
  std::string all;
  for( auto const & [which, shelf] : room.shelves ) {
    all += "shelf " + text( shelfNumber( which ) ) + " " + std::to_string( shelf.wide ) + ":";
    for( auto const & [title, weight] : shelf.books )
      all += " " + title + "=" + text( Koi::Seconds( weight ) );
    all += "\n";
  }
  for( auto const & [name, lamp] : room.lamps )
    all += name + " " + lampText( lamp ) + "\n";
  for( auto const & [which, count] : room.counts )
    all += "count " + std::to_string( which ) + " " + std::to_string( count ) + "\n";
  for( auto const & [number, what] : room.visitors )
    all += "visitor " + std::to_string( number ) + " " + text( ShelfNumber( what ) ) + "\n";
  if( room.hasCeiling )
    all += "ceiling " + lampText( room.ceiling ) + "\n";
  if( !room.finding.empty() )
    all += "finding " + room.finding + "\n";
  return all;
}

std::string wholeText( Room const & room ) {
  std::string all = withoutLights( room );
  for( auto const & i : room.shelf() )
    all += "light " + text( i.key() ) + " " + referenceText( i.value()->light() ) + "\n";
  return all;
}

std::string withoutLights( Room const & room ) {
  std::string all = plainText( room );
  std::map< std::string, std::string > rest;
  for( auto const & i : room.lamp() )
    rest["lamp " + text( i.key() )] = wholeText( *i.value() );
  for( auto const & i : room.lampAt() )
    rest["at " + text( i.key() )] = referenceText( i.value() );
  for( auto const & i : room.borrowed() )
    rest["borrowed " + std::to_string( i.key() )] = referenceText( i.value() );
  for( auto const & [name, what] : rest )
    all += name + " " + what + "\n";
  auto const [head, tail] = room.visitorMetadata();
  return all + "main " + referenceText( room.mainLamp() ) + "\nspare " +
         referenceText( room.spareLamp() ) + "\nvisitors from " + std::to_string( head ) + " to " +
         std::to_string( tail ) + "\n";
}

}  // namespace TestSupport
