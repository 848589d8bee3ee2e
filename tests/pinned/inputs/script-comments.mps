//
// x;


//point oid=1;
