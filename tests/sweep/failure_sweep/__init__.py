"""Lets every system call of the save road fail in turn and reads what became of the report."""
