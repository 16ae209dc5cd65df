// libcups brings GnuTLS along, which starts as soon as it is loaded unless the program answers here that
// whoever needs it starts it (its manual calls that GNUTLS_SKIP_GLOBAL_INIT). libcups does so before its
// first connection, so that only a program which asks no server goes without.

// NOLINTNEXTLINE(bugprone-reserved-identifier): GnuTLS looks for this name.
extern "C" [[gnu::visibility("default")]] int _gnutls_global_init_skip();

// NOLINTNEXTLINE(bugprone-reserved-identifier)
int _gnutls_global_init_skip() { return 1; }
