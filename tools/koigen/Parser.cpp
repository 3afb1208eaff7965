// Parser.cpp: what each rule of the grammar puts into the model, and what a syntax error is called.
#include "Parser.h"

#include <utility>

#include "Grammar.h"

namespace Koigen {
namespace {

struct State {
  Module module;
  std::string scope, doc;
  bool foreign = false, inOrder = false, unhashed = false, inTable = false;
  Member pending;       // what "virtual", "override" and "static" say of the function to come
  Parameter parameter;  // the one being read
  TypeUse::Hold hold = TypeUse::whole;
  TypeUse type;                   // the last one read
  std::vector< Initial * > open;  // constructions not yet closed
  bool callOpened = false;

  Declaration & decl() { return module.declarations.back(); }
  Member & member() { return decl().members.back(); }

  void begin( Declaration::Kind kind, Place place ) {
    Declaration d;
    d.kind = kind;
    d.place = std::move( place );
    d.scope = scope;
    d.doc = std::exchange( doc, {} );
    d.foreign = std::exchange( foreign, false );
    d.inOrder = std::exchange( inOrder, false );
    d.unhashed = std::exchange( unhashed, false );
    d.inTable = std::exchange( inTable, false );
    module.declarations.push_back( std::move( d ) );
  }

  void begin( Member::Kind kind, Place place ) {
    Member m = std::exchange( pending, {} );
    m.kind = kind;
    m.place = std::move( place );
    decl().members.push_back( std::move( m ) );
  }

  // A default: its words and numbers go where the innermost open construction has its arguments.
  void value( Initial::Kind kind, std::string text, Place place ) {
    Initial & at = open.empty() ? member().initial : open.back()->arguments.emplace_back();
    at.kind = kind;
    at.text = std::move( text );
    at.place = std::move( place );
  }
  void openCall() {
    Initial & at = open.empty() ? member().initial : open.back()->arguments.back();
    at.kind = Initial::construction;
    at.type.text = std::exchange( at.text, {} );
    at.type.place = at.place;
    open.push_back( &at );
  }
};

template< class In >
Place placeOf( In const & in ) {
  auto const at = in.position();
  return { at.source, at.line, at.column };
}

void addDoc( std::string & doc, std::string line ) {
  line.erase( line.find_last_not_of( " \t\r" ) + 1 );
  doc += ( doc.empty() || line.empty() ? "" : "\n" ) + line;
}

template< class Rule >
struct On : tao::pegtl::nothing< Rule > {};

// One line a rule: the rule, then what it does to the state "s" with the matched text "in".
#define ON( Rule, ... )                                              \
  template<>                                                         \
  struct On< Grammar::Rule > {                                       \
    template< class In >                                             \
    static void apply( [[maybe_unused]] In const & in, State & s ) { \
      __VA_ARGS__;                                                   \
    }                                                                \
  }
// clang-format off
ON( DocText, addDoc( s.doc, in.string() ) );
ON( ModuleName, s.module.name = in.string(); s.module.place = placeOf( in ) );
ON( ModuleFolder, s.module.prefix = in.string() + "/" );
ON( UsedName, s.module.uses.push_back( { placeOf( in ), in.string(), nullptr } ) );
ON( ScopeName, s.scope = in.string() );
ON( Foreign, s.foreign = true );
ON( Ordered, s.inOrder = true );
ON( Unhashed, s.unhashed = true );
ON( Table, s.inTable = true );
ON( Value, s.begin( Declaration::structure, placeOf( in ) ) );
ON( Enum, s.begin( Declaration::enumeration, placeOf( in ) ) );
ON( Entity, s.begin( Declaration::entity, placeOf( in ) ) );
ON( Reactor, s.begin( Declaration::reactor, placeOf( in ) ) );
ON( FreeFunction, s.begin( Declaration::function, placeOf( in ) );
                  s.begin( Member::function, placeOf( in ) ) );
ON( DeclName, s.decl().name = in.string(); s.decl().place = placeOf( in ) );
ON( Header, s.decl().header = in.string() );

ON( WrapperColon, s.decl().kind = Declaration::wrapper );
ON( StoredType, s.decl().stored.text = in.string(); s.decl().stored.place = placeOf( in ) );
ON( StoredField, s.decl().field = in.string() );
ON( Low, s.decl().range.low = in.string(); s.decl().range.place = placeOf( in ) );
ON( High, s.decl().range.high = in.string(); s.decl().range.kind = Range::between );
ON( Positive, s.decl().range.kind = Range::positive; s.decl().range.place = placeOf( in ) );
ON( Length, s.decl().range.kind = Range::length; s.decl().range.high = in.string();
            s.decl().range.place = placeOf( in ) );
ON( NumBytes, s.decl().numBytes = in.string(); s.decl().bytesPlace = placeOf( in ) );
ON( HashedWord, s.decl().hashPlace = placeOf( in ) );
ON( HashHeader, s.decl().hashHeader = in.string() );
ON( TextByHand, s.decl().textByHand = true );
ON( OrderByHand, s.decl().orderByHand = true );

ON( EnumeratorName, s.decl().enumerators.push_back( { placeOf( in ), in.string(), {}, {}, 0 } ) );
ON( EnumeratorNumber, s.decl().enumerators.back().number = in.string() );
ON( Enumerator, s.decl().enumerators.back().doc = std::exchange( s.doc, {} ) );
ON( BaseName, s.decl().base.text = in.string(); s.decl().base.place = placeOf( in ) );

ON( Attr, s.begin( Member::scalar, placeOf( in ) ) );
ON( Param, s.begin( Member::param, placeOf( in ) ) );
ON( Hidden, s.begin( Member::hidden, placeOf( in ) ) );
ON( Const, s.begin( Member::constant, placeOf( in ) ) );
ON( Derived, s.begin( Member::derived, placeOf( in ) ) );
ON( Virtual, s.pending.isVirtual = true );
ON( Override, s.pending.isOverride = true );
ON( Static, s.pending.isStatic = true );
ON( Function, s.begin( Member::function, placeOf( in ) ) );
ON( Operation, s.begin( Member::function, placeOf( in ) ); s.member().isOperation = true );
ON( Constructor, s.begin( Member::constructor, placeOf( in ) );
                 s.member().name = s.decl().name );
ON( Hash, s.begin( Member::hashed, placeOf( in ) ) );
ON( Tree, s.begin( Member::ordered, placeOf( in ) ) );
ON( Queue, s.begin( Member::queue, placeOf( in ) ) );
ON( ItsTable, s.begin( Member::table, placeOf( in ) ) );
ON( Child, s.begin( Member::child, placeOf( in ) ); s.hold = TypeUse::own );
ON( ItsReactor, s.begin( Member::reactor, placeOf( in ) ); s.hold = TypeUse::own );
ON( Watch, s.begin( Member::watch, placeOf( in ) ) );
ON( Each, s.member().kind = Member::watchEach );
ON( Start, s.begin( Member::start, placeOf( in ) ) );
ON( Cleanup, s.begin( Member::cleanup, placeOf( in ) ) );
ON( FieldName, s.begin( Member::field, placeOf( in ) ); s.member().name = in.string() );

ON( MemberName, s.member().name = in.string(); s.member().place = placeOf( in ) );
ON( Ref, s.hold = TypeUse::ref );
ON( Weak, s.hold = TypeUse::weak );
ON( Own, s.hold = TypeUse::own );
ON( TypeName, s.member().type = { placeOf( in ), in.string(),
                                  std::exchange( s.hold, TypeUse::whole ), {}, nullptr } );
ON( KeyName, s.member().key = { placeOf( in ), in.string(), {}, {}, nullptr } );
ON( InitialNumber, s.value( Initial::number, in.string(), placeOf( in ) ) );
ON( InitialText, auto const text = in.string();
                 s.value( Initial::quoted, text.substr( 1, text.size() - 2 ), placeOf( in ) ) );
ON( InitialWord, s.value( Initial::word, in.string(), placeOf( in ) ) );
ON( CallOpen, s.openCall() );
ON( CallClose, s.open.pop_back() );
ON( BoundName, s.member().bound = in.string(); s.member().boundPlace = placeOf( in ) );
ON( MaxBytes, s.member().maxBytes = in.string(); s.member().boundPlace = placeOf( in ) );
ON( StoredFirst, s.member().storedFirst = true );
ON( NotNull, s.member().notNull = true );
ON( VirtualAccessor, s.member().isVirtual = true );
ON( ThenHandler, s.member().then = in.string() );
ON( Source, s.member().source = in.string(); s.member().boundPlace = placeOf( in ) );
ON( SourceField, s.member().sourceField = in.string() );
ON( ByField, s.member().byField = in.string(); s.member().byPlace = placeOf( in ) );
ON( Settable, s.member().settable = true );
ON( OrZero, s.member().orZero = true );

ON( ParameterRef, s.parameter.type.hold = TypeUse::ref );
ON( ParameterType, s.parameter.place = placeOf( in ); s.parameter.type.place = placeOf( in );
                   s.parameter.type.text = in.string() );
ON( ParameterConst, s.parameter.isConst = true );
ON( ParameterReference, s.parameter.isReference = true );
ON( ParameterName, s.parameter.name = in.string() );
ON( Parameter, ( s.decl().members.empty() ? s.decl().parameters : s.member().parameters )
                 .push_back( std::exchange( s.parameter, {} ) ) );
ON( CallbackName, s.member().callbacks.push_back( { placeOf( in ), in.string(), {}, {}, nullptr } ) );
ON( CallbackKey, s.member().callbacks.back().keyed = true;
                 s.member().callbacks.back().key = { placeOf( in ), in.string(), {}, {}, nullptr } );
ON( CallbackLine, s.doc.clear() );
ON( WatchOpen, s.member().doc = std::exchange( s.doc, {} ) );
ON( End, if( s.member().callbacks.empty() ) s.member().doc = std::exchange( s.doc, {} ) );
ON( FreeEnd, addDoc( s.decl().doc, std::exchange( s.doc, {} ) ) );
// clang-format on
#undef ON

// What a reader of the model is told when a rule that must match does not.
template< class Rule >
constexpr char const * expected = "this is not the model language";

#define EXPECTED( text, ... ) \
  template<>                  \
  constexpr auto expected< __VA_ARGS__ > = text

// clang-format off
namespace G = Grammar;
using G::T;
using G::Sign;
EXPECTED( "'module NAME;' was expected", G::Module );
EXPECTED( "a module name was expected", T< G::ModuleName > );
EXPECTED( "the name of a module was expected", T< G::UsedName > );
EXPECTED( "the folder of its header was expected", T< G::ModuleFolder > );
EXPECTED( "a namespace name was expected", T< G::ScopeName > );
EXPECTED( "'namespace' or the end of the file was expected", tao::pegtl::eof );
EXPECTED( "a declaration or '}' was expected", G::ScopeClose );
EXPECTED( "'value' or 'entity' was expected", G::ForeignDecl );
EXPECTED( "the name of the declared was expected", T< G::DeclName > );
EXPECTED( "':', '{' or a header was expected", G::ValueBody );
EXPECTED( "':', '{', '(' or a header was expected", G::EntityRest );
EXPECTED( "a header was expected", G::ForeignBody );
EXPECTED( "a number of bytes was expected", T< G::NumBytes > );
EXPECTED( "a header was expected", G::HashHeaderName );
EXPECTED( "a primitive type was expected", T< G::StoredType > );
EXPECTED( "the name of the field was expected", T< G::StoredField > );
EXPECTED( "a number or a constant was expected", T< G::Low > );
EXPECTED( "a number or a constant was expected", T< G::High > );
EXPECTED( "'..' was expected", G::Dots );
EXPECTED( "a number or a constant was expected", T< G::Length > );
EXPECTED( "'text by hand' was expected", G::TextByHand );
EXPECTED( "'text by hand' or 'order by hand' was expected", G::PartByHand );
EXPECTED( "';' or '{' was expected", G::WrapperRest );
EXPECTED( "'{' was expected", G::Open );
EXPECTED( "a member or '}' was expected", G::Close );
EXPECTED( "';' was expected", G::DeclEnd );
EXPECTED( "an enumerator was expected", G::Enumerator );
EXPECTED( "a number was expected", T< G::EnumeratorNumber > );
EXPECTED( "',' or '}' was expected", G::EnumeratorEnd );
EXPECTED( "an enumerator or '}' was expected", G::EnumClose );
EXPECTED( "the name of a base was expected", T< G::BaseName > );
EXPECTED( "documentation stands behind the ';' of its member", tao::pegtl::failure );
EXPECTED( "a name was expected", T< G::MemberName > );
EXPECTED( "':' was expected", Sign< ':' > );
EXPECTED( "a type name was expected", G::Type );
EXPECTED( "'[' was expected", G::Key );
EXPECTED( "']' was expected", Sign< ']' > );
EXPECTED( "a type name was expected", T< G::KeyName > );
EXPECTED( "'=' was expected", G::Default );
EXPECTED( "a value was expected", G::AnyInitial );
EXPECTED( "a value or ')' was expected", G::CallClose );
EXPECTED( "'\"' was expected: a text is one line without '\\'", tao::pegtl::one< '"' > );
EXPECTED( "the name of a constant or a number of bytes was expected", G::Limit );
EXPECTED( "'bytes' was expected", G::BytesWord );
EXPECTED( "'stored before the check', 'not null', 'virtual' or 'then' was expected", G::Clauses );
EXPECTED( "the name of a handler was expected", T< G::ThenHandler > );
EXPECTED( "'not null' was expected", G::NotNull );
EXPECTED( "the name of an attribute was expected", T< G::Source > );
EXPECTED( "'.' was expected", Sign< '.' > );
EXPECTED( "the name of a field was expected", T< G::SourceField > );
EXPECTED( "the name of a field was expected", T< G::ByField > );
EXPECTED( "'function' or 'operation' was expected", G::FunctionWord );
EXPECTED( "'(' was expected", G::Parameters );
EXPECTED( "a parameter or ')' was expected", Sign< ')' > );
EXPECTED( "'{' was expected", G::WatchOpen );
EXPECTED( "a callback or '}' was expected", G::WatchClose );
EXPECTED( "a type name was expected", T< G::CallbackKey > );
EXPECTED( "';' was expected", G::End );
EXPECTED( "';' was expected", G::FreeEnd );
// clang-format on
#undef EXPECTED

template< class Rule >
struct Control : tao::pegtl::normal< Rule > {
  template< class In, class... States >
  static void raise( In const & in, States &&... ) {
    throw ModelError( errorText( placeOf( in ), expected< Rule > ) );
  }
};

}  // namespace

std::string errorText( Place const & place, std::string const & text ) {
  return place.file + ":" + std::to_string( place.line ) + ":" + std::to_string( place.column ) +
         ": " + text;
}

Module parsedModule( std::string_view text, std::string const & fileName ) {
  State state;
  tao::pegtl::memory_input<> in( text.data(), text.size(), fileName );
  tao::pegtl::parse< Grammar::File, On, Control >( in, state );
  return std::move( state.module );
}

}  // namespace Koigen
