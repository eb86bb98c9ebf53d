"""A day in the virtual laptop, told as it happens: what `./run` shows where there is no battery."""
