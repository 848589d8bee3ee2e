mapserver script ver=1.0;
point oid=4,gid=9,pos=34/30/0,135/15/0,str=hut;
point oid=5,pos=1,2;
line oid=6,pos=1,2,3,4;
