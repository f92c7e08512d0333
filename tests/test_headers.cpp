// The precompiled headers of the tests belong to this program, which does nothing else.
int main() {}
