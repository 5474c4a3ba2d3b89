#include <crv/crv.h>

int main() { return 0; }
