/// The entity itself is the child from now on, and is called k; one that is it already stays. Of
/// what is refused, koi/Children.h requireAdoptable() says the exceptions.
Koi::Ptr< Koi::Entity > $attr$Is( Koi::Name const & k, Koi::Ptr< Koi::Entity > const & v );
