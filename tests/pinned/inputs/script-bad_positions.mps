point oid=1,pos=34/30/0;
point oid=2,pos=x,1;
point oid=3,pos=1/2/3/4,1;
		line	gid=5134
				pos=1,2,3
				str=[TR]#1;
