"""The last lines of a run."""


def tell(problems, blame, praise):
    """Prints each problem behind the blame, or the praise when there is none; returns the exit status."""
    print()
    for problem in problems:
        print("%s: %s" % (blame, problem))
    print("Failed." if problems else praise)
    return 1 if problems else 0
