/// Override what you watch; every callback starts out doing nothing.
class NotifieeConst : public Koi::NotifieeOf< $bases$ > {
 public:
  $callbacks$
};
