// Grammar.h: the model language, one struct a rule. This file is its reference.
//
// A rule inside must<> or behind the first of if_must<> has its error text in Parser.cpp.
#pragma once

#include <tao/pegtl.hpp>

namespace Koigen::Grammar {

using namespace tao::pegtl;

// clang-format off

// Blanks, notes and documentation. "//" is a note to the model's own reader; "///" goes into the header.
struct DocText : until< at< eolf > > {};
struct Doc : seq< three< '/' >, star< blank >, DocText > {};
struct Note : seq< two< '/' >, not_at< one< '/' > >, until< at< eolf > > > {};
struct Gap : star< sor< space, Note > > {};
struct SameLine : seq< star< blank >, opt< Doc > > {};  // documentation behind what it documents
struct MoreDoc : star< seq< eol, star< blank >, Doc > > {};  // and on lines of its own below

template< class Rule >
struct T : seq< Rule, Gap > {};  // a token and the gap after it
template< char c >
struct Sign : T< one< c > > {};
#define KOIGEN_WORD( Rule, text ) struct Rule : T< TAO_PEGTL_KEYWORD( text ) > {}

struct Name : identifier {};
struct Scoped : list< identifier, two< ':' > > {};
struct Number : seq< opt< one< '-' > >,
                     sor< seq< one< '0' >, one< 'x' >, plus< xdigit > >,
                          seq< plus< digit >, opt< one< '.' >, plus< digit > > > >,
                     not_at< identifier_other > > {};
struct Header : plus< not_one< '"', '\\', '\r', '\n' > > {};
struct HeaderName : seq< one< '"' >, Header, one< '"' > > {};

// Types. What stands before the name says how an entity is held.
KOIGEN_WORD( Ref, "ref" );
KOIGEN_WORD( Weak, "weak" );
KOIGEN_WORD( Own, "own" );
struct TypeName : Scoped {};
struct Type : seq< opt< sor< Ref, Weak, Own > >, T< TypeName > > {};
struct KeyName : Scoped {};
struct Key : if_must< Sign< '[' >, T< KeyName >, Sign< ']' > > {};

// Defaults and constants: 9236, "1-4094", true, trunk, VlanId( 1 ), Range( VlanId( 1 ), VlanId( 2 ) ).
struct InitialNumber : Number {};
struct TextBody : star< not_one< '"', '\\', '\r', '\n' > > {};
struct InitialText : if_must< one< '"' >, TextBody, one< '"' > > {};
struct InitialWord : Scoped {};
struct CallOpen : Sign< '(' > {};
struct CallClose : Sign< ')' > {};
template< unsigned depth >
struct Initial;
template< unsigned depth >
struct Call : if_must< CallOpen, opt< list< Initial< depth - 1 >, Sign< ',' > > >, CallClose > {};
template<>
struct Call< 0 > : failure {};
template< unsigned depth >
struct Initial : sor< T< InitialNumber >, T< InitialText >,
                      seq< T< InitialWord >, opt< Call< depth > > > > {};
struct AnyInitial : Initial< 3 > {};
struct Default : if_must< Sign< '=' >, AnyInitial > {};

// Parameters: "SwitchIntfConfig const & other".
KOIGEN_WORD( ParameterRef, "ref" );
KOIGEN_WORD( ParameterConst, "const" );
struct ParameterReference : Sign< '&' > {};
struct ParameterType : Scoped {};
struct ParameterName : Name {};
struct Parameter : seq< opt< ParameterRef >, T< ParameterType >, opt< ParameterConst >,
                        opt< ParameterReference >, opt< T< ParameterName > > > {};
struct Parameters : if_must< Sign< '(' >, opt< list< Parameter, Sign< ',' > > >, Sign< ')' > > {};

// Members. Each ends in ";" and carries its documentation behind it.
struct End : seq< one< ';' >, SameLine, MoreDoc, Gap > {};
struct MemberName : Name {};
struct Of : must< Sign< ':' >, Type > {};
struct BoundName : Name {};
struct MaxBytes : plus< digit > {};
struct BytesWord : T< TAO_PEGTL_KEYWORD( "bytes" ) > {};
struct Limit : sor< T< BoundName >, if_must< T< MaxBytes >, BytesWord > > {};
struct Max : if_must< T< TAO_PEGTL_KEYWORD( "max" ) >, Limit > {};
struct StoredFirst : T< TAO_PEGTL_STRING( "stored before the check" ) > {};
struct NotNull : T< TAO_PEGTL_STRING( "not null" ) > {};
struct VirtualAccessor : T< TAO_PEGTL_KEYWORD( "virtual" ) > {};
struct ThenHandler : Name {};
struct Then : if_must< T< TAO_PEGTL_KEYWORD( "then" ) >, T< ThenHandler > > {};
struct Clauses : sor< StoredFirst, NotNull, VirtualAccessor, Then > {};
struct Clause : if_must< Sign< ',' >, Clauses > {};

KOIGEN_WORD( Attr, "attr" );
struct AttrMember : if_must< Attr, T< MemberName >, Of, opt< Default >, opt< Max >, star< Clause >,
                             End > {};
KOIGEN_WORD( Param, "param" );
KOIGEN_WORD( Settable, "settable" );
struct ParamMember : if_must< Param, T< MemberName >, Of, opt< Settable >, End > {};
KOIGEN_WORD( Hidden, "hidden" );
struct HiddenMember : if_must< Hidden, T< MemberName >, Of, End > {};
KOIGEN_WORD( Const, "const" );
struct ConstMember : if_must< Const, T< MemberName >, Of, opt< Default >, End > {};

KOIGEN_WORD( Derived, "derived" );
struct Source : Name {};
struct SourceField : Name {};
struct DerivedFrom : if_must< Sign< '=' >, T< Source >, Sign< '.' >, T< SourceField > > {};
struct DerivedMember : if_must< Derived, T< MemberName >, Of, opt< DerivedFrom >, End > {};

KOIGEN_WORD( Virtual, "virtual" );
KOIGEN_WORD( Override, "override" );
KOIGEN_WORD( Static, "static" );
KOIGEN_WORD( Function, "function" );
KOIGEN_WORD( Operation, "operation" );
KOIGEN_WORD( Constructor, "constructor" );
struct Result : if_must< Sign< ':' >, Type > {};
struct FunctionRest : must< T< MemberName >, Parameters, opt< Result >, End > {};
struct FunctionWord : sor< Function, Operation > {};
struct FunctionMember : sor< seq< FunctionWord, FunctionRest >,
                             if_must< sor< Virtual, Override, Static >, FunctionWord, FunctionRest > > {};
struct ConstructorMember : if_must< Constructor, Parameters, End > {};

KOIGEN_WORD( Hash, "hash" );
KOIGEN_WORD( Tree, "tree" );
KOIGEN_WORD( Queue, "queue" );
struct ByField : Name {};
struct By : if_must< T< TAO_PEGTL_KEYWORD( "by" ) >, T< ByField > > {};
struct CollectionMember : if_must< sor< Hash, Tree, Queue >, T< MemberName >, Key, Of, opt< By >,
                                   star< Clause >, End > {};
KOIGEN_WORD( ItsTable, "table" );
struct TableMember : if_must< ItsTable, T< MemberName >, Key, Of, End > {};
KOIGEN_WORD( Child, "child" );
struct ChildMember : if_must< Child, T< MemberName >, Of, End > {};
KOIGEN_WORD( ItsReactor, "reactor" );
struct ReactorMember : if_must< ItsReactor, T< MemberName >, Of, End > {};

KOIGEN_WORD( Watch, "watch" );
KOIGEN_WORD( Each, "each" );
struct CallbackName : Name {};
struct CallbackKey : Scoped {};
struct CallbackOpen : Sign< '(' > {};
struct CallbackLine : if_must< T< CallbackName >,
                               opt_must< CallbackOpen, T< CallbackKey >, Sign< ')' > >, End > {};
struct WatchOpen : seq< one< '{' >, SameLine, MoreDoc, Gap > {};
struct WatchClose : Sign< '}' > {};
struct WatchMember : if_must< Watch, opt< Each >, T< MemberName >, opt< Key >, Of,
                              opt_must< Sign< ',' >, NotNull >, WatchOpen,
                              star< CallbackLine >, WatchClose > {};
KOIGEN_WORD( Start, "start" );
KOIGEN_WORD( Cleanup, "cleanup" );
struct HandlerMember : if_must< sor< Start, Cleanup >, T< MemberName >, End > {};

struct FieldName : Name {};
struct OrZero : T< seq< TAO_PEGTL_KEYWORD( "or" ), plus< blank >, one< '0' >,
                        not_at< identifier_other > > > {};
struct FieldMember : if_must< T< FieldName >, Of, opt< OrZero >, opt< Settable >, End > {};

// Documentation before a member, where it does not belong, has an error of its own.
struct Misplaced : if_must< at< three< '/' > >, failure > {};

// Values.
KOIGEN_WORD( Foreign, "foreign" );
KOIGEN_WORD( Ordered, "ordered" );
KOIGEN_WORD( Unhashed, "unhashed" );
KOIGEN_WORD( Table, "table" );
KOIGEN_WORD( Value, "value" );
struct DeclName : Name {};
struct Open : Sign< '{' > {};
struct Close : Sign< '}' > {};
struct DeclEnd : Sign< ';' > {};
struct StoredType : Scoped {};
struct StoredField : Name {};
struct Named : if_must< T< TAO_PEGTL_KEYWORD( "named" ) >, T< StoredField > > {};
struct Low : sor< Number, Name > {};
struct High : sor< Number, Name > {};
struct Dots : T< two< '.' > > {};
struct Between : if_must< T< TAO_PEGTL_KEYWORD( "in" ) >, T< Low >, Dots, T< High > > {};
KOIGEN_WORD( Positive, "positive" );
struct Length : sor< plus< digit >, Name > {};
struct MaxLength : if_must< T< TAO_PEGTL_KEYWORD( "max" ) >, T< Length > > {};
struct TextByHand : T< TAO_PEGTL_STRING( "text by hand" ) > {};
struct ByHand : if_must< Sign< ',' >, TextByHand > {};
struct OrderByHand : T< TAO_PEGTL_STRING( "order by hand" ) > {};
struct PartByHand : sor< TextByHand, OrderByHand > {};
struct PartsByHand : star< if_must< Sign< ',' >, PartByHand > > {};
struct HashHeader : plus< not_one< '"', '\\', '\r', '\n' > > {};
struct HashHeaderName : T< seq< one< '"' >, HashHeader, one< '"' > > > {};
struct HashedWord : T< TAO_PEGTL_STRING( "hashed in" ) > {};
struct HashedIn : if_must< HashedWord, HashHeaderName > {};
struct WrapperOpen : Sign< '{' > {};
struct WrapperMembers : seq< WrapperOpen,
                             star< sor< Misplaced, ConstMember, FunctionMember, ConstructorMember > >,
                             must< Close > > {};
struct WrapperRest : sor< WrapperMembers, DeclEnd > {};
struct WrapperColon : Sign< ':' > {};
struct WrapperBody : if_must< WrapperColon, T< StoredType >, opt< Named >,
                              opt< sor< Between, Positive, MaxLength > >, opt< ByHand >,
                              WrapperRest > {};
struct StructureBody : seq< opt< HashedIn >, PartsByHand, Open,
                            must< star< sor< Misplaced, ConstMember, FunctionMember,
                                             ConstructorMember, FieldMember > >, Close > > {};
struct ForeignBody : seq< T< HeaderName >, must< DeclEnd > > {};
struct NumBytes : plus< digit > {};
struct OfBytes : if_must< T< TAO_PEGTL_KEYWORD( "of" ) >, T< NumBytes >, BytesWord > {};
struct ForeignValueBody : seq< T< HeaderName >, opt< OfBytes >, must< DeclEnd > > {};
struct ValueBody : sor< ForeignValueBody, WrapperBody, StructureBody > {};
struct ValueDecl : seq< star< sor< Ordered, Unhashed, Table > >,
                        if_must< Value, T< DeclName >, ValueBody > > {};

// Enumerations.
KOIGEN_WORD( Enum, "enum" );
struct EnumeratorName : Name {};
struct EnumeratorNumber : Number {};
struct EnumeratorEnd : sor< seq< one< ',' >, SameLine, MoreDoc, Gap >,
                            seq< opt< Doc >, MoreDoc, Gap, at< one< '}' > > > > {};
struct Enumerator : if_must< T< EnumeratorName >, opt_must< Sign< '=' >, T< EnumeratorNumber > >,
                             EnumeratorEnd > {};
struct EnumClose : Sign< '}' > {};
struct EnumDecl : if_must< Enum, T< DeclName >, Open, Enumerator, star< Enumerator >, EnumClose > {};

// Entities and reactors.
KOIGEN_WORD( Entity, "entity" );
struct BaseName : Scoped {};
struct Base : if_must< Sign< ':' >, T< BaseName > > {};
struct EntityMembers : must< star< sor< Misplaced, AttrMember, ParamMember, HiddenMember,
                                        ConstMember, DerivedMember, FunctionMember, CollectionMember,
                                        TableMember, ChildMember, ReactorMember > >, Close > {};
struct EntityBody : sor< seq< Base, must< Open >, EntityMembers >, seq< Open, EntityMembers > > {};
struct ForeignEntityBody : sor< seq< Parameters, must< ForeignBody > >, ForeignBody > {};
struct EntityRest : sor< ForeignEntityBody, EntityBody > {};
struct EntityDecl : if_must< Entity, T< DeclName >, EntityRest > {};
KOIGEN_WORD( Reactor, "reactor" );
struct ReactorDecl : if_must< Reactor, T< DeclName >, Open,
                              star< sor< Misplaced, WatchMember, AttrMember, ParamMember,
                                         ConstMember, CollectionMember, HandlerMember > >,
                              Close > {};

// Functions of a namespace.
KOIGEN_WORD( FreeFunction, "function" );
struct FreeEnd : seq< one< ';' >, SameLine, Gap > {};
struct FreeDecl : if_must< FreeFunction, T< MemberName >, Parameters, opt< Result >, FreeEnd > {};

// The file.
struct ForeignDecl : sor< ValueDecl, EntityDecl > {};
struct Decl : seq< star< T< Doc > >,
                   sor< if_must< Foreign, ForeignDecl >, ValueDecl, EnumDecl,
                        EntityDecl, ReactorDecl, FreeDecl > > {};
struct ModuleName : Name {};
struct ModuleFolder : Name {};
struct InFolder : if_must< T< TAO_PEGTL_KEYWORD( "in" ) >, T< ModuleFolder > > {};
struct UsedName : Name {};
struct ScopeName : seq< identifier, rep_max< 15, two< ':' >, identifier > > {};
struct ScopeClose : Sign< '}' > {};
struct Uses : if_must< T< TAO_PEGTL_KEYWORD( "uses" ) >, T< UsedName >, DeclEnd > {};
struct Scope : if_must< T< TAO_PEGTL_KEYWORD( "namespace" ) >, T< ScopeName >, Open, star< Decl >,
                        ScopeClose > {};
struct Module : T< TAO_PEGTL_KEYWORD( "module" ) > {};
struct File : must< Gap, Module, T< ModuleName >, opt< InFolder >, DeclEnd, star< Uses >, star< Scope >, eof > {};

// clang-format on
#undef KOIGEN_WORD

}  // namespace Koigen::Grammar
