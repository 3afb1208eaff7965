// Emitter.cpp: a module's header and its source, around the texts of its declarations.
#include "Emitter.h"

#include <algorithm>

#include "Fold.h"

namespace Koigen {
namespace {

using Texts = std::vector< std::string >;

bool hasKind( Module const & module, Declaration::Kind kind ) {
  return std::any_of( module.declarations.begin(), module.declarations.end(),
                      [&]( auto const & d ) { return d.kind == kind && !d.foreign; } );
}

bool hasTableValue( Module const & module ) {
  return std::any_of( module.declarations.begin(), module.declarations.end(),
                      []( auto const & d ) { return d.inTable; } );
}

/// Whether an entity of the module has such a member.
bool hasMember( Module const & module, Member::Kind kind ) {
  return std::any_of( module.declarations.begin(), module.declarations.end(),
                      [&]( auto const & d ) {
                        return std::any_of( d.members.begin(), d.members.end(),
                                            [&]( auto const & m ) { return m.kind == kind; } );
                      } );
}

std::string headerName( Module const & module ) { return module.prefix + module.name + ".h"; }

std::string declarationText( Context const & context, Declaration const & d ) {
  if( d.foreign )
    return {};
  switch( d.kind ) {
    case Declaration::wrapper:
      return wrapperText( context, d );
    case Declaration::structure:
      return structureText( context, d );
    case Declaration::enumeration:
      return enumerationText( context, d );
    case Declaration::entity:
      return entityText( context, d );
    case Declaration::reactor:
      return reactorText( context, d );
    case Declaration::function:
      return functionText( context, d );
  }
  return {};
}

/// The headers of the runtime that the module's kinds of declarations need.
std::string runtimeText( Module const & module ) {
  std::string text = "#include <koi/Value.h>\n";
  if( hasTableValue( module ) )
    text += "#include <koi/RecordBytes.h>\n";
  if( hasKind( module, Declaration::entity ) )
    text += "#include <koi/Entity.h>\n";
  if( hasMember( module, Member::reactor ) )
    text += "#include <koi/EntityReactor.h>\n";
  if( hasMember( module, Member::table ) )
    text += "#include <quill/KoiQuillMap.h>\n";
  if( hasKind( module, Declaration::reactor ) )
    text += "#include <koi/Reactor.h>\n";
  return text;
}

/// What the module uses: its headers, or the headers of what is foreign in it.
std::string includesText( Module const & module ) {
  Texts names;
  auto const add = [&]( std::string const & name ) {
    if( std::find( names.begin(), names.end(), name ) == names.end() )
      names.push_back( name );
  };
  auto const addForeign = [&]( Module const & m ) {
    for( auto const & d : m.declarations )
      if( d.foreign )
        add( d.header );
  };
  for( auto const & u : module.uses )
    isForeign( *u.module ) ? addForeign( *u.module ) : add( headerName( *u.module ) );
  addForeign( module );
  for( auto const & d : module.declarations )
    if( d.inTable )
      add( d.hashHeader.empty() ? "quill/Record.h" : d.hashHeader );
  std::string text;
  for( auto const & name : names )
    text += "#include <" + name + ">\n";
  return text;
}

std::string forwardText( Module const & module ) {
  std::string text;
  for( auto const * d : module.forward )
    text += "namespace " + d->scope + " { class " + d->name + "; }\n";
  return text;
}

/// Entities of other modules that were only named: their headers stand behind, for either may be
/// included first.
std::string behindText( Module const & module ) {
  Texts names;
  for( auto const * d : module.forward ) {
    std::string const name = d->foreign ? d->header : headerName( *d->module );
    if( d->module != &module && std::find( names.begin(), names.end(), name ) == names.end() )
      names.push_back( name );
  }
  std::string text;
  for( auto const & name : names )
    text += "#include <" + name + ">\n";
  return text.empty() ? "" : "// What was only pointed to.\n" + text;
}

/// The declarations in their namespaces, as the module opens them.
std::string scopesText( Context const & context ) {
  auto const & all = context.module().declarations;
  Texts scopes, declarations;
  for( std::size_t i = 0; i < all.size(); ++i ) {
    declarations.push_back( declarationText( context, all[i] ) );
    if( i + 1 < all.size() && all[i + 1].scope == all[i].scope )
      continue;
    std::string const text = stacked( declarations );
    if( !text.empty() )
      scopes.push_back( page( "scope", { { "scope", all[i].scope }, { "declarations", text } } ) );
    declarations.clear();
  }
  return stacked( scopes );
}

bool isValue( Declaration const & d ) { return d.kind <= Declaration::enumeration && !d.foreign; }

std::string wrappersText( Module const & module ) {
  std::string text;
  for( auto const & d : module.declarations ) {
    if( !isValue( d ) )
      continue;
    std::string name = d.fullName();
    for( auto at = name.find( "::" ); at != name.npos; at = name.find( "::" ) )
      name.replace( at, 2, "_" );
    text += "namespace _koi_" + name + " { using GenericIf_ = Koi::GenericValue< " + d.fullName() +
            " >; }\n";
  }
  return text.empty() ? "" : "// Reflection wrappers: each holds one copy of a value.\n" + text;
}

/// How values lie in the slots of tables.
std::string recordsText( Context const & context ) {
  Texts records;
  for( auto const & d : context.module().declarations )
    if( d.inTable )
      records.push_back( recordText( context, d ) );
  return stacked( records );
}

/// Bodies of an entity or a reactor in its namespace.
std::string inScope( Declaration const & d, std::string const & bodies ) {
  return page( "scope", { { "scope", d.scope }, { "declarations", bodies } } );
}

/// What compiles a type's bodies.
std::string typeText( Context const & context, Declaration const & d ) {
  switch( d.kind ) {
    case Declaration::enumeration: {
      Texts entries;
      for( auto const & e : d.enumerators )
        entries.push_back( "{ \"" + e.name + "\", " + std::to_string( e.value ) + " }" );
      return "KOI_ENUM_TYPE( " + d.scope + ", " + d.name + ", " + stacked( entries, ", " ) + " )\n";
    }
    case Declaration::entity:
      return inScope( d, entityBodyText( context, d ) ) + genericEntityText( context, d );
    case Declaration::reactor:
      return inScope( d, reactorBodyText( context, d ) ) + "KOI_REACTOR( " + d.fullName() + " )\n";
    case Declaration::function:
      return {};
    case Declaration::structure:
      if( d.inTable )
        return "KOI_TABLE_VALUE( " + d.fullName() + ", Quill::Record< " + d.fullName() +
               " > )\ntemplate class Quill::TableTypeOf< " + d.fullName() +
               " >;\ntemplate class KoiQuill::KoiQuillMap< Quill::Record< " + d.fullName() +
               " >::Key, " + d.fullName() + " >;\n";
      [[fallthrough]];
    default:
      return "KOI_VALUE( " + d.fullName() + " )\n";
  }
}

}  // namespace

bool isForeign( Module const & module ) {
  return std::all_of( module.declarations.begin(), module.declarations.end(),
                      []( auto const & d ) { return d.foreign; } );
}

std::string headerOf( Model const & model, Module const & module ) {
  Context const context( model, module );
  return folded( page( "header", { { "module", module.name },
                                   { "runtime", runtimeText( module ) },
                                   { "includes", includesText( module ) },
                                   { "forward", forwardText( module ) },
                                   { "scopes", scopesText( context ) },
                                   { "wrappers", wrappersText( module ) },
                                   { "records", recordsText( context ) },
                                   { "behind", behindText( module ) } } ) );
}

Texts sourcesOf( Model const & model, Module const & module, std::size_t parts ) {
  Context const context( model, module );
  std::vector< Declaration const * > registered;
  for( auto const & d : module.declarations )
    if( !d.foreign && d.kind != Declaration::function )
      registered.push_back( &d );
  auto const isObject = []( Declaration const * d ) {
    return d->kind == Declaration::entity || d->kind == Declaration::reactor;
  };
  auto const numObjects =
      static_cast< std::size_t >( std::ranges::count_if( registered, isObject ) );

  Texts names, nodes;
  std::vector< Texts > types( std::max< std::size_t >( parts, 1 ) );
  std::size_t at = 0;  // how many objects were dealt out
  for( auto const * d : registered ) {
    std::size_t const part = isObject( d ) ? at++ * types.size() / numObjects : 0;
    types[part].push_back( typeText( context, *d ) );
    names.push_back( "\"" + d->fullName() );
    nodes.push_back( d->kind == Declaration::enumeration ? "&" + d->scope + "::_koiType_" + d->name
                                                         : "&" + d->fullName() + "::_koiType" );
  }
  std::string const registration = "KOI_MODULE( " + module.name + ",\n            " +
                                   stacked( names, "\\0\"\n            " ) + "\",\n            " +
                                   stacked( nodes, ",\n            " ) + " )\n";
  std::string runtime = "#include <koi/Registration.h>\n";
  if( hasTableValue( module ) )
    runtime +=
        "#include <koi/RecordRegistration.h>\n#include <quill/KoiQuillMapBody.h>\n"
        "#include <quill/TableTypeOf.h>\n";
  if( numObjects > 0 )
    runtime += "#include <koi/EntityRegistration.h>\n";
  Texts sources;
  for( auto const & part : types )
    sources.push_back( page(
        "module",
        { { "module", module.name },
          { "header", headerName( module ) },
          { "runtime", registered.empty() ? "" : runtime },
          { "types", stacked( part, "" ) },
          { "registration", sources.empty() && !registered.empty() ? registration : "" } } ) );
  return sources;
}

}  // namespace Koigen
