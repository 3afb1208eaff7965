// Export.h: what leaves the shared library. Everything is built hidden; what carries KOI_PUBLIC is
// seen by programs, and an exception or a type node that carries it is one object for all of them.
#pragma once

#define KOI_PUBLIC __attribute__( ( visibility( "default" ) ) )
