"""A narrated day in the virtual laptop, which `./run` shows on machines without a battery."""
