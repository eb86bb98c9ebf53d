"""A laptop's life, minute by minute: what happens to it, what the program should make of it, and what that costs."""
