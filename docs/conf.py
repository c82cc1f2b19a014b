"""Settings of the documentation's generator; tools/site runs it."""

project = "Quillmate"
extensions = ["myst_parser"]
html_theme = "furo"
html_title = "Quillmate"
html_static_path = ["_static"]
html_css_files = ["site.css"]
html_show_sphinx = False
html_copy_source = False
html_show_copyright = False
html_last_updated_fmt = None
myst_heading_anchors = 3
exclude_patterns = ["pictures", "_static"]
highlight_language = "none"
# The scripts of commands are JSON, one object a line.
suppress_warnings = ["misc.highlighting_failure"]


def setup(app):
    from sphinx.highlighting import lexer_classes
    from pygments.lexers import JsonLexer

    lexer_classes["jsonl"] = JsonLexer
