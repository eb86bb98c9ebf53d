"""The pictures of the documentation: the program on a virtual laptop's desktop, as its screen shows it."""
