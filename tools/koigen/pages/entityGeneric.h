namespace $scope$::_koi_$Type$ {
class GenericIfNotifiee_ final : public Koi::GenericNotifieeOf< $Type$ > {
 public:
  using GenericNotifieeOf::GenericNotifieeOf;

  $forwards$
};
}  // namespace $scope$::_koi_$Type$
KOI_ENTITY( $scope$, $Type$ )
