
// The text, by hand.
Koi::String8 koiText() const;
static $Type$ koiParsed( Koi::String8::IteratorConst & it, Koi::String8::IteratorConst const & end );
