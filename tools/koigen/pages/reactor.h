/// $doc$
class KOI_PUBLIC $Type$ : public Koi::ReactorOf< $Type$ > {
 public:
  $explicit$$Type$($parameters$);

  $attributes$

  static constexpr char koiName[] = "$scope$::$Type$";
  static constexpr auto koiParameters() {
    return std::tuple{
      $constructor$
    };
  }
  static Koi::KoiType const _koiType;

 private:
  $handlers$

  $observers$

  $hooks$

  $cells$
};

/// A new $Type$ that listens.
KOI_PUBLIC Koi::Ptr< $Type$ > $Type$Is($parameters$);
KOI_PUBLIC Koi::Ptr< $Type$ > $factory$($parameters$);
