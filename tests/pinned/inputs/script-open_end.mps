//Header:Prog:1.0.8.0 Templ:1.2 Date:11/15/2002 14:05:12;
mapserver script ver=1.0;
		message	str=Walrim;
		theme	str=Walrim Datum:WGS84 UTCOffset:9;
		point	oid=1
				pos=1,2