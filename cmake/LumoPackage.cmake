# What `cmake --install` puts where, and what find_package( Lumo ) then finds.

include( CMakePackageConfigHelpers )

set( packageDir "${CMAKE_INSTALL_LIBDIR}/cmake/Lumo" )
set( modelDir "${CMAKE_INSTALL_DATADIR}/lumo/model" )

# The library's folders have short names, so they stand in a folder of their own.
install( TARGETS lumo koigen EXPORT LumoTargets
  FILE_SET HEADERS DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/lumo"
)
install( EXPORT LumoTargets NAMESPACE Lumo:: DESTINATION "${packageDir}" )

# Models that a user's own model may name.
get_property( models GLOBAL PROPERTY LUMO_MODELS )
install( FILES ${models} DESTINATION "${modelDir}" )

configure_package_config_file( "${PROJECT_SOURCE_DIR}/cmake/LumoConfig.cmake.in" LumoConfig.cmake
  INSTALL_DESTINATION "${packageDir}"
  PATH_VARS modelDir
)
write_basic_package_version_file( LumoConfigVersion.cmake COMPATIBILITY SameMinorVersion )
install( FILES
  "${PROJECT_BINARY_DIR}/LumoConfig.cmake"
  "${PROJECT_BINARY_DIR}/LumoConfigVersion.cmake"
  "${PROJECT_SOURCE_DIR}/cmake/KoiGenerate.cmake"
  DESTINATION "${packageDir}"
)
