#include "contract/Shapes.h"

#include <koi/Registration.h>

KOI_VALUE( Shapes::Offset )
KOI_VALUE( Shapes::Level )
KOI_VALUE( Shapes::Serial )
KOI_VALUE( Shapes::Octet )
KOI_VALUE( Shapes::PortNumber )
KOI_VALUE( Shapes::Tag )
KOI_VALUE( Shapes::Label )
KOI_VALUE( Shapes::Delay )
KOI_ENUM_TYPE( Shapes, Colour, { "red", 5 }, { "green", 6 }, { "blue", 9 } )
KOI_VALUE( Shapes::Narrow )
KOI_VALUE( Shapes::Deep )
KOI_VALUE( Shapes::Wide )
KOI_VALUE( Shapes::OrZero )
KOI_VALUE( Shapes::Plain )
KOI_VALUE( Shapes::HoldsPlain )
KOI_MODULE( Shapes,
            "Shapes::Offset\0Shapes::Level\0Shapes::Serial\0Shapes::Octet\0Shapes::PortNumber\0"
            "Shapes::Tag\0Shapes::Label\0Shapes::Delay\0Shapes::Colour\0Shapes::Narrow\0"
            "Shapes::Deep\0Shapes::Wide\0Shapes::OrZero\0Shapes::Plain\0Shapes::HoldsPlain",
            &Shapes::Offset::_koiType, &Shapes::Level::_koiType, &Shapes::Serial::_koiType,
            &Shapes::Octet::_koiType, &Shapes::PortNumber::_koiType, &Shapes::Tag::_koiType,
            &Shapes::Label::_koiType, &Shapes::Delay::_koiType, &Shapes::_koiType_Colour,
            &Shapes::Narrow::_koiType, &Shapes::Deep::_koiType, &Shapes::Wide::_koiType,
            &Shapes::OrZero::_koiType, &Shapes::Plain::_koiType, &Shapes::HoldsPlain::_koiType )
