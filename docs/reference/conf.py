# The reference of the Python package, made by Sphinx from its docstrings: ./dev test reference.
project = "starsift"
extensions = ["sphinx.ext.autodoc"]
html_theme = "alabaster"
html_theme_options = {"nosidebar": True}
autodoc_member_order = "bysource"
autodoc_typehints = "signature"
add_module_names = False
