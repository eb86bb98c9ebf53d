"""Takes the pictures in docs/: screenshots of the program on the desktop of a virtual laptop."""
