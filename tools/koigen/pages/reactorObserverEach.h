class Koi$Attr$ : public $type$::NotifieeConst {
 public:
  Koi$Attr$( $Reactor$ * reactor, $key$ key ) : reactor_( reactor ), key_( key ) {}
  $Key$ fwkKey() const { return key_; }
  $forwards$

 private:
  $Reactor$ * reactor_;
  $Key$ const key_;
};
