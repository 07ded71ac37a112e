/* Order numbers hold a '#'. In comments, texts and quoted names it is an ordinary character:
   #$status# stays here as it is. */
select o."Order #", 'order #' || o."Order #" as [label #1], c.name -- the # of the order, then #$status#
from sales_order o
join customer c on c.customer_id = o.customer_id
where o."Order #" like 'A#%'
  and o.status = 'paid' -- here it is a block
  and c.name <> 'it''s #$nobody#'
order by 1;
