TITLE = "乱写的网页和文件"


def run(tools, share):
    """Yields a row for each kind of harm: what, how many times, and what broke."""
    return []
