// Where the address field was; see host/address_field.h.
#ifndef BGP_PREFIX_ADDRESS_FIELD_H
#define BGP_PREFIX_ADDRESS_FIELD_H

#include "host/address_field.h"

#endif
