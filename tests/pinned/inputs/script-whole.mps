//Header:Prog:1.0.8.0 Templ:1.2 Date:11/15/2002 14:05:12;
mapserver script ver=1.0;
		message	str=Walrim;
		theme	str=Walrim Datum:WGS84 UTCOffset:9;
		point	oid=1
				gid=5131
				pos=35/37/30.7,139/14/37.3
				str=TAKAO 
				strformat=right
				info=[WP]<TAKAO><SUMMIT>;
		line	oid=2
				gid=5132
				pos=35/37/30.7,139/14/37.3
				str=RtNo:7 RpNum:1
				strformat=right
				info=[RT]<RIDGE>;
		point	oid=3
				gid=5133.1
				pos=35/37/30.7,139/14/37.3
				str=A     
				strformat=right
				info=RP:1<A><CRTD 14:05 15-NOV-02>;
		line	oid=4
				gid=5134
				pos=35/37/30.7,139/14/37.3,35/37/40.7,139/14/37.3
				str=[TR]#1
				strformat=right
				info=[TR]#1 Total:2tps .3km ;
		point	oid=5
				gid=5135
				pos=35/37/30.7,139/14/37.3
				info=[TR]#1 TP:1 11/15/2002 09:00:00;
		disp	all;
mapserver end;
