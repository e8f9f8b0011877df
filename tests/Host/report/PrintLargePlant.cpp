#include <iostream>

#include "benchmarks/ThreeEnginePlant.h"

/// Prints the input file of the plant that whole runs are measured on.
int main() { std::cout << verenwick::plant::ThreeEnginePlant().text(); }
