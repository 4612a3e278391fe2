/*
 * replaceable.h - how a host library defines a service, so that a program which defines the same one replaces it,
 * whether the library is linked dynamically or statically.
 */
#ifndef BGP_HOST_REPLACEABLE_H
#define BGP_HOST_REPLACEABLE_H

#if defined(__GNUC__)
#define BGP_REPLACEABLE __attribute__((weak))
#else
#define BGP_REPLACEABLE
#endif

#endif
