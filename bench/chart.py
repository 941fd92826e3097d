"""A chart of ratios as SVG: one bar each, the line at 1 is what is measured against."""
from xml.sax.saxutils import escape

WIDTH, LABELS, ROW, TOP = 860, 430, 30, 56
STYLE = """
    text { font: 13px system-ui, sans-serif; fill: #1f2430; }
    .title { font-size: 15px; font-weight: 600; }
    .bar { fill: #2f6fbb; }
    .one { stroke: #b3401e; stroke-dasharray: 4 3; }
    .paper { fill: #ffffff; }
    @media (prefers-color-scheme: dark) {
        text { fill: #e6e9ef; } .bar { fill: #6ea8ea; } .one { stroke: #f0906c; } .paper { fill: #14171d; }
    }"""


def chart(title, ratios):
    """Of pairs of a label and a ratio."""
    height = TOP + ROW * len(ratios) + 14
    most = max([ratio for _, ratio in ratios] + [1.4])
    scale = (WIDTH - LABELS - 70) / most
    one = LABELS + scale
    rows = []
    for number, (label, ratio) in enumerate(ratios):
        top = TOP + ROW * number
        rows.append(f'<text x="{LABELS - 10}" y="{top + 15}" text-anchor="end">{escape(label)}</text>'
                    f'<rect class="bar" x="{LABELS}" y="{top + 2}" width="{ratio * scale:.1f}" height="18" rx="2"/>'
                    f'<text x="{LABELS + ratio * scale + 6:.1f}" y="{top + 15}">{ratio:.2f}</text>')
    body = "\n".join(rows)
    return f"""<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {height}" role="img" aria-label="{escape(title)}">
<style>{STYLE}
</style>
<rect class="paper" width="{WIDTH}" height="{height}"/>
<text class="title" x="16" y="26">{escape(title)}</text>
{body}
<line class="one" x1="{one:.1f}" y1="{TOP - 8}" x2="{one:.1f}" y2="{height - 8}"/>
</svg>
"""
