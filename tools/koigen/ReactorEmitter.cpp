// ReactorEmitter.cpp: which pages a reactor and what it watches take, and what fills them.
#include <algorithm>

#include "Emitter.h"
#include "EntityEmitter.h"

namespace Koigen {
namespace {

using Texts = std::vector< std::string >;

/// Two watched entities may call the same handler.
void addOnce( Texts & texts, std::string const & text ) {
  if( std::find( texts.begin(), texts.end(), text ) == texts.end() )
    texts.push_back( text );
}

/// The class of a reactor, gathered member by member.
class ReactorText {
 public:
  ReactorText( Context const & context, Declaration const & reactor )
      : context_( context ), reactor_( reactor ) {}

  MemberTexts texts() {
    Texts constructor;
    for( auto const & p : Context::constructorOf( reactor_ ) )
      constructor.push_back(
          ( p.member && p.member->settable ? "Koi::initial( \"_" : "Koi::parameter( \"_" ) +
          p.name + "\", &" + reactor_.name + "::" + p.name + " )" );
    for( auto const & m : reactor_.members )
      add( m );
    std::string const & type = reactor_.name;
    std::string const parameters = inBlanks( stacked( parameters_, ", " ) );
    std::string const factory = lowerCamel( type ) + "Factory";
    MemberTexts texts;
    texts.declared =
        page( "reactor", { { "doc", reactor_.doc },
                           { "Type", type },
                           { "scope", reactor_.scope },
                           { "explicit", parameters_.size() == 1 ? "explicit " : "" },
                           { "parameters", parameters },
                           { "attributes", stacked( attributes_ ) },
                           { "constructor", stacked( constructor, ",\n" ) },
                           { "handlers", handlers_.empty() ? ""
                                                           : "// Handlers: their bodies are "
                                                             "written by hand.\n" +
                                                                 stacked( handlers_, "\n" ) },
                           { "observers", stacked( observers_ ) },
                           { "hooks", stacked( hooks_, "\n" ) },
                           { "factory", factory },
                           { "cells", stacked( cells_, "\n" ) } } );
    texts.defined = page(
        "reactorBody",
        { { "Type", type },
          { "parameters", parameters },
          { "arguments", inBlanks( stacked( arguments_, ", " ) ) },
          { "initialisers", initialisers_.empty() ? "" : " : " + stacked( initialisers_, ", " ) },
          { "attributes", stacked( bodies_ ) },
          { "factory", factory } } );
    return texts;
  }

 private:
  void add( Member const & m ) {
    switch( m.kind ) {
      case Member::watch:
        addWatched( m );
        break;
      case Member::watchEach:
        addWatchedEach( m );
        break;
      case Member::param:
        addParam( m );
        break;
      case Member::constant:
        attributes_.push_back( constantText( context_, m ) );
        break;
      case Member::start:
        addOnce( handlers_, "void " + m.name + "();" );
        hooks_.push_back( "void koiStart() override { " + m.name + "(); }" );
        break;
      case Member::cleanup:
        addOnce( handlers_, "void " + m.name + "();" );
        hooks_.push_back( "void koiCleanup() override { " + m.name + "(); }" );
        break;
      default:
        if( !m.then.empty() )
          addOnce( handlers_, "void " + m.then + "();" );
        addTexts( attributeTexts( context_, { reactor_, false }, m ) );
        cells_.push_back( cellText( context_, m ) );
    }
  }

  void addTexts( MemberTexts const & texts ) {
    attributes_.push_back( texts.declared );
    bodies_.push_back( texts.defined );
  }

  void addParam( Member const & m ) {
    parameters_.push_back( givenArgument( context_, m.type ) + " " + m.name );
    arguments_.push_back( m.name );
    if( m.settable ) {
      initialisers_.push_back( m.name + "_( " + m.name + " )" );
      addTexts( attributeTexts( context_, { reactor_, false }, m ) );
      cells_.push_back( cellText( context_, m ) );
      return;
    }
    initialisers_.push_back( "_" + m.name + "( " + m.name + " )" );
    attributes_.push_back( paramText( context_, m ) );
    cells_.push_back( paramCellText( context_, m ) );
  }

  void addWatched( Member const & m ) {
    std::string const type = context_.bare( m.type ), pointer = "Koi::Ptr< " + type + " >";
    parameters_.push_back( pointer + " const & " + m.name );
    arguments_.push_back( m.name );
    initialisers_.push_back( m.name + "_( this, " + m.name + " )" );
    addTexts(
        { page( "reactorWatched", { { "doc", m.doc }, { "attr", m.name }, { "type", pointer } } ),
          page( "reactorWatchedBody",
                { { "Owner", reactor_.name }, { "attr", m.name }, { "type", pointer } } ) } );
    observers_.push_back( page( "reactorObserver", { { "Attr", capital( m.name ) },
                                                     { "type", type },
                                                     { "Reactor", reactor_.name },
                                                     { "forwards", forwards( m ) } } ) );
    cells_.push_back( "Koi::Watched< Koi" + capital( m.name ) + ", " + type + " > " + m.name +
                      "_;" );
  }

  void addWatchedEach( Member const & m ) {
    std::string const type = context_.bare( m.type ), pointer = "Koi::Ptr< " + type + " >";
    std::string const key = context_.cpp( m.key );
    initialisers_.push_back( m.name + "_( this )" );
    Fill declared{ { "attr", m.name },
                   { "type", pointer },
                   { "Key", key },
                   { "key", context_.argument( m.key ) } };
    Fill defined = declared;
    declared["doc"] = m.doc;
    declared["null"] = m.notNull ? "null is refused" : "null watches nothing";
    defined["Owner"] = reactor_.name;
    defined["refusal"] = refusal( reactor_, m, "entity" );
    addTexts(
        { page( "reactorWatchedEach", declared ), page( "reactorWatchedEachBody", defined ) } );
    observers_.push_back( page( "reactorObserverEach", { { "Attr", capital( m.name ) },
                                                         { "type", type },
                                                         { "Reactor", reactor_.name },
                                                         { "Key", key },
                                                         { "key", context_.argument( m.key ) },
                                                         { "forwards", forwards( m ) } } ) );
    cells_.push_back( "Koi::WatchedEach< Koi" + capital( m.name ) + ", " + key + ", " + type +
                      " > " + m.name + "_;" );
  }

  /// The callbacks of an inner observer; their handlers are declared on the way.
  std::string forwards( Member const & watched ) {
    bool const each = watched.kind == Member::watchEach;
    Texts texts;
    for( auto const & c : watched.callbacks ) {
      std::string const handler = "handle" + c.name.substr( 2 );
      std::string const key = c.keyed ? context_.argument( c.key ) : "";
      Texts parameters, arguments;
      if( each ) {
        parameters.push_back( context_.argument( watched.key ) + " watched" );
        arguments.push_back( "Koi::copyOf( key_ )" );
      }
      if( c.keyed ) {
        parameters.push_back( key + " key" );
        arguments.push_back( "key" );
      }
      addOnce( handlers_,
               "void " + handler + "(" + inBlanks( stacked( parameters, ", " ) ) + ");" );
      // A collection has two callbacks of one name; the one that is not overridden stays visible.
      if( c.keyed || ( c.attribute && c.attribute->isKeyed() ) )
        addOnce( texts, "using NotifieeConst::" + c.name + ";" );
      texts.push_back( "void " + c.name + "(" + ( c.keyed ? " " + key + " key " : "" ) +
                       ") override { " + "Koi::Ptr< " + reactor_.name + " >( reactor_ )->" +
                       handler + "(" + inBlanks( stacked( arguments, ", " ) ) + "); }" );
    }
    return stacked( texts, "\n" );
  }

  static std::string inBlanks( std::string const & list ) {
    return list.empty() ? "" : " " + list + " ";
  }

  Context const & context_;
  Declaration const & reactor_;
  Texts parameters_, arguments_, initialisers_, attributes_, bodies_, handlers_, observers_, hooks_,
      cells_;
};

}  // namespace

std::string reactorText( Context const & context, Declaration const & declaration ) {
  return ReactorText( context, declaration ).texts().declared;
}

std::string reactorBodyText( Context const & context, Declaration const & declaration ) {
  return ReactorText( context, declaration ).texts().defined;
}

}  // namespace Koigen
