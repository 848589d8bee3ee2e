//Header:Prog:1.0.8.0 Templ:1.2 Date:11/15/2002 14:05:12;
mapserver script ver=1.0;
georef system=TOKYO;
		point	oid=1
				gid=5131
				pos=35/37/30.7,139/14/37.3
				str=TAKAO
				info=[WP]<TAKAO><SUMMIT>;
