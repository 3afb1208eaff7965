// RoomChanges.h: random changes of a room of Everything.koi, a plain twin of it, and the text of
// both, by which they are compared.
#pragma once

#include <deque>
#include <map>
#include <random>

#include <tools/koigen/EverythingHandlers.h>

namespace TestSupport {

/// One change of a room: what is done and with which numbers. What cannot be done does nothing.
struct RoomChange {
  enum Kind : unsigned {
    shelfIs,
    shelfDel,
    bookIs,
    bookDel,
    lampIs,
    lampDel,
    lampAgain,
    lampLit,
    lampLabel,
    lampAngle,
    lampAtIs,
    lampAtDel,
    mainLampIs,
    spareLampIs,
    countIs,
    countDel,
    countAgain,
    visitorEnq,
    visitorDeq,
    visitorDel,
    ceilingIs,
    ceilingDel,
    findingIs,
    findingDel,
    numKinds
  };

  Kind kind;
  unsigned which, what;

  static RoomChange any( std::mt19937 & random ) {
    return { static_cast< Kind >( random() % numKinds ), static_cast< unsigned >( random() % 5 ),
             static_cast< unsigned >( random() % 4 ) };
  }

  void apply( Everything::Room & room ) const;
};

/// The same state, kept without entities. A lamp that was taken out is known by nobody.
struct PlainRoom {
  struct Lamp {
    bool lit = false;
    Koi::U16 watts = 40;
    std::string label = "lamp";
  };
  struct Shelf {
    bool wide = false;
    std::map< std::string, unsigned > books;
  };

  std::map< unsigned, Shelf > shelves;
  std::map< std::string, Lamp > lamps;
  std::map< unsigned, unsigned > counts;
  std::deque< std::pair< unsigned, unsigned > > visitors;
  unsigned nextVisitor = 0;
  bool hasCeiling = false;
  Lamp ceiling;
  std::string finding;

  void apply( RoomChange const & change );
};

/// What both of them hold.
std::string plainText( Everything::Room const & room );
std::string plainText( PlainRoom const & room );
/// All that a room holds but for the lights of its shelves. What a child was made from never
/// changes again: where both ends of a log replace what it refers to at the same time, its two
/// copies may keep different ones.
std::string withoutLights( Everything::Room const & room );
/// All that a room holds.
std::string wholeText( Everything::Room const & room );

}  // namespace TestSupport
