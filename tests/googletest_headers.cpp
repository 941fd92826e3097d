// No test: the program for which the headers of GoogleTest are compiled, so that the test programs share
// them.
