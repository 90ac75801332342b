// The numbers of the public interface, class and type library, defined once for the component.
#include <initguid.h>
// first
#include "tovar_idl.h"
