// $module$.h: written by koigen from $module$.koi. Change that file, not this one.
#pragma once

$runtime$
$includes$

$forward$

$scopes$

$wrappers$

$records$

$behind$
