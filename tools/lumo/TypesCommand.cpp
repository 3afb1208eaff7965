#include "TypesCommand.h"

#include <algorithm>

#include <koijson/NearestName.h>

#include "Output.h"
#include "TypeJson.h"
#include "TypeText.h"

namespace Lumo {
namespace {

using Koi::KoiType;

/// "VlanId" of "Bridging::VlanId".
std::string_view withoutNamespace( std::string_view name ) {
  auto const colon = name.rfind( ':' );
  return colon == name.npos ? name : name.substr( colon + 1 );
}

[[noreturn]] void refuseType( std::string const & name ) {
  // Whoever leaves out the namespace, or a letter of it, may mean several; the first will do.
  std::vector< std::string_view > names, shortNames;
  for( auto const * const type : Koi::typeNodes() ) {
    names.push_back( type->name );
    shortNames.push_back( withoutNamespace( type->name ) );
  }
  std::string_view meant = Koi::nearestName( name, names );
  if( auto const near = Koi::nearestName( withoutNamespace( name ), shortNames );
      meant.empty() && !near.empty() )
    meant = names[static_cast< std::size_t >( std::ranges::find( shortNames, near ) -
                                              shortNames.begin() )];
  throw Failure( wrongUse,
                 "there is no type '" + name + "'" +
                     ( meant.empty() ? "" : "; did you mean " + std::string( meant ) + "?" ) );
}

/// The types that one NAME names: itself, or all of a namespace and of those inside it.
std::vector< KoiType const * > named( std::string const & name ) {
  bool const isNamespace = name.ends_with( "::" );
  auto types = Koi::typeNodes();
  std::erase_if( types, [&]( KoiType const * type ) {
    std::string_view const other = type->name;
    return isNamespace ? !other.starts_with( name ) : other != name;
  } );
  if( types.empty() && isNamespace )
    throw Failure( wrongUse, "there is no type in the namespace '" + name + "'" );
  if( types.empty() )
    refuseType( name );
  return types;
}

std::string inFull( Types types ) {
  std::string text;
  for( auto const * const type : types )
    text += ( text.empty() ? "" : "\n" ) + typeInFull( *type );
  return text;
}

}  // namespace

TypesCommand::TypesCommand( CLI::App & program )
    : command_(
          program.add_subcommand( "types", "lists the types of the model and the runtime" ) ) {
  command_
      ->add_option(
          "NAME", names_,
          "a type, which is shown with its attributes; or a namespace, as Bridging::, whose "
          "types are listed" )
      ->type_name( "" );
  command_->add_flag( "--attributes", isInFull_, "show all attributes of every type" );
  command_->add_flag( "--json", isJson_, "print one JSON object" );
}

std::string TypesCommand::output() const {
  if( isJson_ || names_.empty() ) {
    auto types = names_.empty() ? Koi::typeNodes() : std::vector< KoiType const * >();
    for( auto const & name : names_ )
      for( auto const * const type : named( name ) )
        if( std::ranges::find( types, type ) == types.end() )
          types.push_back( type );
    return isJson_ ? typesJson( types ) : isInFull_ ? inFull( types ) : typeTable( types );
  }
  std::string text;
  for( auto const & name : names_ ) {
    auto const types = named( name );
    bool const isTable = name.ends_with( "::" ) && !isInFull_;
    text += ( text.empty() ? "" : "\n" ) + ( isTable ? typeTable( types ) : inFull( types ) );
  }
  return text;
}

}  // namespace Lumo
