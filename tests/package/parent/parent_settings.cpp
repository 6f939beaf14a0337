// The parent's settings reach its own sources unchanged.
#ifndef PARENT
#error "the parent's definitions are gone"
#endif
#ifdef __OPTIMIZE__
#error "the parent compiles with -O0"
#endif
static_assert(__cplusplus > 201703L, "the parent compiles as C++20");
