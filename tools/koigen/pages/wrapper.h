/// $doc$
class KOI_PUBLIC $Type$ : public Koi::Wrapped< $Type$, $stored$ > {
 public:
  using Wrapped::Wrapped;
  $constructors$

  $functions$

  $constants$

  static constexpr char koiName[] = "$name$";
  static constexpr char koiField[] = "$field$";
  $facts$
  static Koi::KoiType const _koiType;
  $hooks$
};
