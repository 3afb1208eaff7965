/// There is nothing to watch but what it extends.
class NotifieeConst : public Koi::NotifieeOf< $bases$ > {};
