WP,D,A;B,34.7,135,d,t,// $STR$ ; url=x ><
RN,1,a;b
RP,D,"p><q, x",34.7,135,d,t,c
