# docs/manual/conf.py - how Sphinx builds the HTML manual from what tools/handbook.py has written
project = "Orvel"
author = "the Orvel developers"
html_title = "Orvel"
extensions = ["myst_parser", "sphinx_inline_tabs"]
html_theme = "sphinx_rtd_theme"
html_show_copyright = False
html_copy_source = False
html_theme_options = {"navigation_depth": 2, "collapse_navigation": True}
exclude_patterns = []
highlight_language = "none"
myst_heading_anchors = 3
source_suffix = {".md": "markdown"}
html_static_path = ["manual.css"]
html_css_files = ["manual.css"]
