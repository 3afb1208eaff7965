/// $doc$
class KOI_PUBLIC $Type$ : public Koi::$base$< $Type$ > {
 public:
  $Type$() = default;
  $constructors$
  $Type$( Koi::String8::IteratorConst & it, Koi::String8::IteratorConst const & end ) { koiParse( it, end ); }
  $Type$( Koi::NboAttrLog::In * in, Koi::StreamBogon ) { koiRead( in ); }

  $accessors$

  $functions$

  $constants$

  static constexpr char koiName[] = "$name$";
  static constexpr auto koiFields() {
    return std::tuple{
      $fields$
    };
  }
  $facts$
  static Koi::KoiType const _koiType;
  $hooks$

 private:
  $cells$
};
