// A library of two functions, for the tool's own test: one test looks at the first and hardly at the second.
int larger(int one, int other)
{
    if (one < other) {
        return other;
    }
    return one;
}

int bounded(int value, int most)
{
    const int positive = larger(value, 0);
    return positive < most ? positive : most;
}
