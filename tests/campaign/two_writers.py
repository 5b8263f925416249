TITLE = "两个程序写一个库"


def run(tools, share):
    """Yields a row for each kind of harm: what, how many times, and what broke."""
    return []
