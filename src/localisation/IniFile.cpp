#include "localisation/IniFile.h"

// The one instantiation the program uses, compiled once here.
template class CIniFileT<CFile>;
