<?xml version="1.0" encoding="UTF-8"?>
<!--
  Shows the mark-up of a structured SQL text as coloured SQL, for a browser that opens the mark-up beside this file.

  The page's text is the SQL itself, blank by blank, so that it can be copied: the rules of line breaks, blanks and
  indentation here are those of the library. A line's indentation is that of the text around it and one blank for each
  bracket which that text has opened before.
-->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
  <xsl:output method="html" encoding="UTF-8"/>

  <!-- Keywords by what goes before or behind them; all others begin a line and have a blank behind them. -->
  <xsl:variable name="blankBefore">|AS|ASC|BETWEEN|DESC|IN|LOCAL|NULLS LAST|THEN|TOP|</xsl:variable>
  <xsl:variable name="nothingBefore">|WITH|</xsl:variable>
  <xsl:variable name="lineBehind">|EXCEPT|EXCEPT ALL|FULL OUTER JOIN|INNER JOIN|INTERSECT|INTERSECT ALL|LEFT OUTER JOIN|RIGHT OUTER JOIN|SELECT DISTINCT|UNION|UNION ALL|</xsl:variable>
  <xsl:variable name="nothingBehind">|END|LOCAL|NULLS LAST|WITHIN GROUP|</xsl:variable>

  <xsl:template match="/">
    <html>
      <head>
        <title>SQL</title>
        <style>
          body { margin: 1.5em 2em; color: #24292f; background: #fff; }
          .origin { margin: 0 0 .8em; font: 13px sans-serif; color: #6e7781; }
          pre { margin: 0; font: 14px/1.45 monospace; tab-size: 4; }
          .k, .bop, .fk { color: #0550ae; font-weight: bold; }
          .f { color: #8250df; }
          .t { color: #116329; }
          .g { color: #953800; }
          .op, .p { color: #57606a; }
          .comment { color: #6e7781; font-style: italic; }
          .bad { color: #fff; background: #cf222e; }
        </style>
      </head>
      <body>
        <xsl:if test="*/@line">
          <p class="origin">Query at line <xsl:value-of select="*/@line"/></p>
        </xsl:if>
        <pre><xsl:apply-templates select="*"/></pre>
      </body>
    </html>
  </xsl:template>

  <!-- A text: an element of any name but those below. -->
  <xsl:template match="*">
    <xsl:param name="indent" select="0"/>
    <xsl:if test="name() = 'sql'"><span class="comment">/* version 1.1 */</span><xsl:text>&#10;</xsl:text></xsl:if>
    <xsl:if test="name() = 'pss'">
      <xsl:call-template name="line"><xsl:with-param name="indent" select="$indent"/></xsl:call-template>
    </xsl:if>
    <xsl:variable name="inner" select="$indent + 4 * (name() = 'i')"/>
    <xsl:for-each select="*">
      <xsl:apply-templates select=".">
        <xsl:with-param name="indent"
          select="$inner + count(preceding-sibling::p[. = '(']) - count(preceding-sibling::p[. = ')'])"/>
      </xsl:apply-templates>
    </xsl:for-each>
  </xsl:template>

  <xsl:template match="g[not(*)] | d[not(*)] | f[not(*)] | t[not(*)]">
    <xsl:call-template name="piece"/>
  </xsl:template>

  <xsl:template match="op[not(*)] | fk[not(*)]">
    <xsl:text> </xsl:text><xsl:call-template name="piece"/><xsl:text> </xsl:text>
  </xsl:template>

  <xsl:template match="bop[not(*)]">
    <xsl:param name="indent"/>
    <xsl:call-template name="line"><xsl:with-param name="indent" select="$indent"/></xsl:call-template>
    <xsl:call-template name="piece"/><xsl:text> </xsl:text>
  </xsl:template>

  <xsl:template match="p[not(*)]">
    <xsl:param name="indent"/>
    <xsl:call-template name="piece"/>
    <xsl:if test=". = ','">
      <xsl:call-template name="line"><xsl:with-param name="indent" select="$indent"/></xsl:call-template>
    </xsl:if>
  </xsl:template>

  <xsl:template match="k[not(*)]">
    <xsl:param name="indent"/>
    <xsl:variable name="word" select="concat('|', ., '|')"/>
    <xsl:choose>
      <xsl:when test="contains($nothingBefore, $word)"/>
      <!-- The AND of a BETWEEN stays on its line, the one between conditions doesn't. -->
      <xsl:when test="contains($blankBefore, $word) or . = 'AND' and preceding-sibling::k[1] = 'BETWEEN'">
        <xsl:text> </xsl:text>
      </xsl:when>
      <xsl:otherwise>
        <xsl:call-template name="line"><xsl:with-param name="indent" select="$indent"/></xsl:call-template>
      </xsl:otherwise>
    </xsl:choose>
    <xsl:call-template name="piece"/>
    <xsl:choose>
      <xsl:when test="contains($nothingBehind, $word)"/>
      <xsl:when test="contains($lineBehind, $word)">
        <xsl:call-template name="line"><xsl:with-param name="indent" select="$indent"/></xsl:call-template>
      </xsl:when>
      <xsl:when test=". = 'IN'">
        <xsl:call-template name="line"><xsl:with-param name="indent" select="$indent + 3"/></xsl:call-template>
      </xsl:when>
      <xsl:otherwise><xsl:text> </xsl:text></xsl:otherwise>
    </xsl:choose>
    <xsl:text> </xsl:text>
  </xsl:template>

  <!-- What stands for an unknown value is made to catch the eye. -->
  <xsl:template name="piece">
    <span class="{name()}">
      <xsl:if test=". = 'UnknownKeyword' or . = '***badPunctuation***'">
        <xsl:attribute name="class">bad</xsl:attribute>
      </xsl:if>
      <xsl:value-of select="."/>
    </span>
  </xsl:template>

  <xsl:template name="line">
    <xsl:param name="indent"/>
    <xsl:text>&#10;</xsl:text>
    <xsl:call-template name="blanks"><xsl:with-param name="count" select="$indent"/></xsl:call-template>
  </xsl:template>

  <xsl:template name="blanks">
    <xsl:param name="count"/>
    <xsl:value-of select="substring('                                                                ', 1, $count)"/>
    <xsl:if test="$count &gt; 64">
      <xsl:call-template name="blanks"><xsl:with-param name="count" select="$count - 64"/></xsl:call-template>
    </xsl:if>
  </xsl:template>
</xsl:stylesheet>
