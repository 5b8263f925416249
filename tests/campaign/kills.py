TITLE = "随时杀掉"


def run(tools, share):
    """Yields a row for each kind of harm: what, how many times, and what broke."""
    return []
