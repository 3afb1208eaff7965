/// $doc$
class KOI_PUBLIC $Type$ : public Koi::EntityOf< $bases$ > {
 public:
  $explicit$$Type$( $parameters$ );

  $attributes$

  $notifiee$
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, $Type$ >;

  static constexpr char koiName[] = "$scope$::$Type$";
  static constexpr auto koiParameters() {
    return std::tuple{
      $constructor$
    };
  }
  template< class Self = $Type$ >
  static constexpr auto koiAttributes() {
    return std::tuple{
      $table$
    };
  }
  static constexpr unsigned koiEnd = koiFirst + $numAttributes$;
  $reactors$
  static Koi::KoiType const _koiType;

 private:
  $cells$
};

/// A new $Type$ without a parent.
KOI_PUBLIC Koi::Ptr< $Type$ > $factory$( $parameters$ );
