// $module$.module.cpp: written by koigen from $module$.koi.
#include <$header$>
$runtime$

$types$

$registration$
