// Gives the precompiled headers of the tests a library to belong to.
namespace veldra {
extern const int test_headers_are_compiled;
const int test_headers_are_compiled = 1;
}  // namespace veldra
