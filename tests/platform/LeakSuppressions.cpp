// Where locales are looked for in LOCPATH, as the tests of the user's locale
// do, newlocale of the C library forgets to free its list of folders.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() { return "leak:argz_add_sep"; }
